// A flashcard package, its collection, or a packed collection, read as an import does. Only the program's own errors
// may come out, and a second reading gives the same.
//
// The first byte of the input says what the others are: 0 a package, 1 the database of an older package, 2 that of a
// newer package, which is packed here, 3 a packed database.
#include "exchange/decks/package_deck.h"
#include "exchange/decks/packages.h"
#include "fuzz/read_rows.h"
#include "platform/archive/packing.h"
#include "platform/archive/zip_archives.h"
#include "platform/sqlite/sqlite_foreign_databases.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

using namespace cuedrill;
using fuzz::Reading;

constexpr std::size_t most_bytes = 65536;

/// Small packages and databases of every kind, each behind the byte that says what it is.
const std::vector<std::string>& seeds()
{
    static const std::vector<std::string> made = [] {
        const std::vector<decks::NoteType> types{{.id = 1, .name = "Basic", .fields = {"Front", "Back"}},
                                                 {.id = 2, .name = "Verb", .fields = {"Infinitive", "Past", "More"}}};
        std::vector<decks::Note> notes;
        for (int i = 1; i <= 12; ++i)
            notes.push_back({.id = i,
                             .type = 1 + i % 2,
                             .fields = {"<b>question</b> " + std::to_string(i), "{{c1::answer}}<br>[sound:a.mp3]",
                                        std::string(static_cast<std::size_t>(i) * 40, 'x')}});
        const std::string small_pages = "PRAGMA page_size = 512;";
        const std::string before = small_pages + decks::old_collection(types, notes);
        const std::string now = small_pages + decks::new_collection(types, notes);
        return std::vector<std::string>{
            std::string("\0", 1) + decks::package_of(1, before),
            std::string("\0", 1) + decks::package_of(3, now),
            "\1" + packing::database_of(before),
            "\2" + packing::database_of(now),
            "\3" + packing::zstandard_of(packing::database_of(now)),
        };
    }();
    return made;
}

std::string package_of(std::string_view input)
{
    const std::string rest(input.substr(1));
    switch (input.front()) {
    case 1:
        return packing::zip_of({{.name = "collection.anki2", .bytes = rest, .method = 0}});
    case 2:
        return packing::zip_of({{.name = "collection.anki21b", .bytes = packing::zstandard_of(rest), .method = 0}});
    case 3:
        return packing::zip_of({{.name = "collection.anki21b", .bytes = rest, .method = 0}});
    default:
        return rest;
    }
}

Reading read(const std::string& package, std::size_t piece)
{
    const platform::archive::ZipArchives archives;
    const platform::sqlite::SqliteForeignDatabases databases(std::chrono::milliseconds(200));
    Reading result = fuzz::read([&]() -> std::unique_ptr<decks::Deck> {
        return std::make_unique<decks::PackageDeck>(packing::file_of(package, piece), archives, databases);
    });
    // As if a note took its last field from the one before.
    if (fuzz::is_broken() && piece == 61 && result.rows.size() > 1)
        result.rows[1].texts.back() = result.rows[0].texts.back() + "x";
    return result;
}

using Engine = std::minstd_rand;

std::size_t below(Engine& engine, std::size_t end)
{
    return end == 0 ? 0 : engine() % end;
}

/// Changes some bytes as libFuzzer does, or copies one half of a kibibyte over another, which may be pages.
void change(std::string& input, Engine& engine)
{
    constexpr std::size_t page = 512;
    const std::size_t pages = (input.size() - 1) / page;
    if (pages > 1 && below(engine, 6) == 0) {
        input.replace(1 + below(engine, pages) * page, page, input.substr(1 + below(engine, pages) * page, page));
        return;
    }
    const std::size_t place = 1 + below(engine, input.size() - 1);
    const std::size_t length = std::min(1 + below(engine, 8), input.size() - place);
    LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(input.data() + place), length, length);
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned number)
{
    Engine engine(number);
    std::string input(fuzz::text_of(data, size));
    if (input.size() < 50 || below(engine, 128) == 0)
        input = seeds().at(below(engine, seeds().size()));
    for (std::size_t changes = 1 + below(engine, 4); changes > 0; --changes)
        change(input, engine);
    if (input.size() > most)
        return LLVMFuzzerMutate(data, size, most);
    std::memcpy(data, input.data(), input.size());
    return input.size();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2 || size > most_bytes)
        return -1;
    const std::string package = package_of(fuzz::text_of(data, size));
    fuzz::require(fuzz::same(read(package, package.size() + 1), read(package, 61)),
                  "a second reading, in other pieces, gives the same");
    return 0;
}
