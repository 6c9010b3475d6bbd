#include "exchange/decks/deck_opening.h"

#include "common/errors.h"
#include "common/text.h"
#include "exchange/decks/anki_text_deck.h"
#include "exchange/decks/mnemosyne_text_deck.h"
#include "exchange/decks/package_deck.h"
#include "exchange/decks/table_deck.h"
#include "exchange/decks/vocabulary_deck.h"
#include "exchange/record_source.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace cuedrill::decks {
namespace {

/// The most bytes of a package. Its pictures and sounds are not read, but they are in the file.
constexpr std::uint64_t longest_package = 8ULL * 1024 * 1024 * 1024;

/// What a reader is opened with.
struct Opening {
    const std::string& path;
    const DeckOptions& options;
    const platform::Files& files;
    const DeckTools& tools;

    [[nodiscard]] std::unique_ptr<platform::FileReading> file(std::uint64_t longest = exchange::longest_file) const
    {
        return files.begin_reading(path, longest);
    }
};

std::string rows_separated_by(char separator)
{
    return "rows with two fields separated by " + name_of_separator(separator);
}

OpenedDeck open_table(const Opening& opening)
{
    auto deck =
        std::make_unique<TableDeck>(opening.file(), opening.tools.conversions, opening.path, opening.options.table);
    std::string looked_for = rows_separated_by(deck->format().shape.separator);
    return {.deck = std::move(deck), .looked_for = std::move(looked_for)};
}

OpenedDeck open_anki_text(const Opening& opening)
{
    auto deck =
        std::make_unique<AnkiTextDeck>(opening.file(), opening.tools.conversions, opening.options.table.encoding);
    std::string looked_for = rows_separated_by(deck->separator());
    return {.deck = std::move(deck), .looked_for = std::move(looked_for)};
}

OpenedDeck open_mnemosyne_text(const Opening& opening)
{
    return {.deck = std::make_unique<MnemosyneTextDeck>(opening.file(), opening.tools.conversions,
                                                        opening.options.table.encoding),
            .looked_for = "lines with two or three texts separated by TAB"};
}

OpenedDeck open_package(const Opening& opening)
{
    return {.deck = std::make_unique<PackageDeck>(opening.file(longest_package), opening.tools.archives,
                                                  opening.tools.databases),
            .looked_for = "notes with two fields"};
}

OpenedDeck open_vocabulary(const Opening& opening)
{
    return {.deck = std::make_unique<VocabularyDeck>(opening.file(), opening.tools.xml),
            .looked_for = "entries with texts in two languages"};
}

/// A format of decks. A further one is a line of the table below.
struct Format {
    std::string_view name;
    std::array<std::string_view, 3> endings; ///< of file names; "" for none
    OpenedDeck (*open)(const Opening& opening);
};

constexpr std::array<Format, 5> formats{{{"table", {".csv", ".tsv", ".tab"}, open_table},
                                         {"anki-text", {}, open_anki_text},
                                         {"mnemosyne-text", {}, open_mnemosyne_text},
                                         {"anki-package", {".apkg", ".colpkg"}, open_package},
                                         {"kvtml", {".kvtml"}, open_vocabulary}}};

bool has_ending(std::string_view path, std::string_view ending)
{
    return !ending.empty() && path.size() > ending.size() &&
           common::equal_ascii(path.substr(path.size() - ending.size()), ending);
}

/// The format of a file's name; null if it has none.
const Format* format_of_name(std::string_view path)
{
    const auto* const found = std::find_if(formats.begin(), formats.end(), [&](const Format& format) {
        return std::any_of(format.endings.begin(), format.endings.end(),
                           [&](std::string_view ending) { return has_ending(path, ending); });
    });
    return found == formats.end() ? nullptr : found;
}

const Format& format_named(std::string_view name)
{
    const auto* const found = std::find_if(
        formats.begin(), formats.end(), [&](const Format& format) { return common::equal_ascii(format.name, name); });
    if (found != formats.end())
        return *found;
    std::string all;
    for (const Format& format : formats)
        all.append(all.empty() ? "" : ", ").append(format.name);
    throw common::Error("The format \"" + std::string(name) + "\" is not known. Known are " + all + ".");
}

const Format& format_of(const std::string& path, const DeckOptions& options)
{
    if (options.format)
        return format_named(*options.format);
    if (const Format* const format = format_of_name(path))
        return *format;
    throw common::Error("The name of " + path + " does not say its format.");
}

} // namespace

bool is_deck_name(std::string_view path)
{
    return format_of_name(path) != nullptr;
}

std::vector<std::string> deck_formats()
{
    std::vector<std::string> names;
    for (const Format& format : formats)
        names.emplace_back(format.name);
    return names;
}

OpenedDeck open_deck(const std::string& path, const DeckOptions& options, const platform::Files& files,
                     const DeckTools& tools)
{
    return format_of(path, options).open({path, options, files, tools});
}

} // namespace cuedrill::decks
