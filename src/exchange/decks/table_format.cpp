#include "exchange/decks/table_format.h"

#include "common/text.h"
#include "exchange/collected_text.h"
#include "exchange/decks/deck.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <set>
#include <utility>

namespace cuedrill::decks {
namespace {

/// The best first, where several are as good.
constexpr std::array<char, 4> separators{'\t', ';', '|', ','};

enum class Language { english, german, french, spanish, italian, dutch };

struct UsualName {
    Language language;
    std::string_view name;
};

constexpr std::array<UsualName, 60> usual_names{
    {{Language::english, "question"},    {Language::english, "answer"},     {Language::english, "questions"},
     {Language::english, "answers"},     {Language::english, "front"},      {Language::english, "back"},
     {Language::english, "term"},        {Language::english, "definition"}, {Language::english, "word"},
     {Language::english, "translation"}, {Language::english, "meaning"},    {Language::english, "prompt"},
     {Language::english, "response"},    {Language::english, "cue"},        {Language::german, "frage"},
     {Language::german, "antwort"},      {Language::german, "fragen"},      {Language::german, "antworten"},
     {Language::german, "vorderseite"},  {Language::german, "rückseite"},   {Language::german, "begriff"},
     {Language::german, "definition"},   {Language::german, "wort"},        {Language::german, "bedeutung"},
     {Language::german, "übersetzung"},  {Language::german, "Übersetzung"}, {Language::french, "question"},
     {Language::french, "réponse"},      {Language::french, "recto"},       {Language::french, "verso"},
     {Language::french, "terme"},        {Language::french, "définition"},  {Language::french, "mot"},
     {Language::french, "traduction"},   {Language::spanish, "pregunta"},   {Language::spanish, "respuesta"},
     {Language::spanish, "anverso"},     {Language::spanish, "reverso"},    {Language::spanish, "término"},
     {Language::spanish, "definición"},  {Language::spanish, "palabra"},    {Language::spanish, "traducción"},
     {Language::spanish, "significado"}, {Language::italian, "domanda"},    {Language::italian, "risposta"},
     {Language::italian, "fronte"},      {Language::italian, "retro"},      {Language::italian, "termine"},
     {Language::italian, "definizione"}, {Language::italian, "parola"},     {Language::italian, "traduzione"},
     {Language::dutch, "vraag"},         {Language::dutch, "antwoord"},     {Language::dutch, "voorkant"},
     {Language::dutch, "achterkant"},    {Language::dutch, "begrip"},       {Language::dutch, "definitie"},
     {Language::dutch, "woord"},         {Language::dutch, "vertaling"},    {Language::dutch, "betekenis"}}};

using Fields = std::vector<std::string>;

char lower_ascii(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

std::string simplified(std::string_view text)
{
    std::string result(exchange::trim_exchange_text(text));
    std::transform(result.begin(), result.end(), result.begin(), lower_ascii);
    return result;
}

/// The sample as a table.
struct Sample {
    std::vector<Fields> rows{};
    std::int64_t odd_quotes = 0; ///< quotation marks that begin a field and quote nothing
};

Sample parsed(std::string_view text, bool is_whole, const TableShape& shape)
{
    Sample sample;
    const TableParser::Sink sink = [&](TableRow row) { sample.rows.push_back(std::move(row.fields)); };
    TableParser parser(shape);
    parser.add(text, sink);
    if (is_whole || sample.rows.empty())
        parser.finish(sink);
    sample.odd_quotes = parser.read_again();
    return sample;
}

/// How well a separator divides the sample.
struct Division {
    std::size_t rows = 1;
    std::size_t alike = 0;   ///< rows with the most frequent number of fields above one
    std::size_t divided = 0; ///< rows with several fields
    std::int64_t odd_quotes = 0;

    /// Whether the share of rows that are alike is larger, or more quotation marks have a meaning.
    [[nodiscard]] bool is_better_than(const Division& other) const
    {
        const std::size_t mine = alike * other.rows;
        const std::size_t others = other.alike * rows;
        return mine > others || (mine == others && mine != 0 && odd_quotes < other.odd_quotes);
    }
};

Division division_of(const Sample& sample)
{
    std::map<std::size_t, std::size_t> counts;
    for (const Fields& fields : sample.rows)
        ++counts[fields.size()];
    Division division{.rows = std::max<std::size_t>(sample.rows.size(), 1), .odd_quotes = sample.odd_quotes};
    for (const auto& [fields, count] : counts) {
        if (fields < 2)
            continue;
        division.alike = std::max(division.alike, count);
        division.divided += count;
    }
    return division;
}

bool has_ending(std::string_view name, std::string_view ending)
{
    return name.size() >= ending.size() && common::equal_ascii(name.substr(name.size() - ending.size()), ending);
}

char separator_of(std::string_view sample, bool is_whole, std::string_view name, TableShape shape)
{
    const bool prefers_tab = has_ending(name, ".tsv") || has_ending(name, ".tab");
    Division best;
    char separator = prefers_tab ? '\t' : ',';
    for (const char candidate : separators) {
        shape.separator = candidate;
        const Division division = division_of(parsed(sample, is_whole, shape));
        if (candidate == '\t' && prefers_tab && division.divided > 0)
            return candidate;
        if (division.is_better_than(best)) {
            best = division;
            separator = candidate;
        }
    }
    return separator;
}

/// The separator of a line "sep=;", and where the text goes on behind it.
struct SeparatorLine {
    char separator = ',';
    std::size_t size = 0;
};

std::optional<SeparatorLine> separator_line(std::string_view sample)
{
    constexpr std::string_view beginning = "sep=";
    if (sample.size() <= beginning.size() || !common::equal_ascii(sample.substr(0, beginning.size()), beginning))
        return std::nullopt;
    const SeparatorLine line{.separator = sample[beginning.size()], .size = beginning.size() + 1};
    const std::string_view rest = sample.substr(line.size);
    const bool is_usable = line.separator > ' ' || line.separator == '\t';
    if (!is_usable || line.separator == '"')
        return std::nullopt;
    if (rest.starts_with(common::cr_lf))
        return SeparatorLine{.separator = line.separator, .size = line.size + 2};
    if (rest.starts_with('\n') || rest.starts_with('\r'))
        return SeparatorLine{.separator = line.separator, .size = line.size + 1};
    return rest.empty() ? std::optional(line) : std::nullopt;
}

bool is_number(std::string_view field)
{
    const std::string_view text = exchange::trim_exchange_text(field);
    return text.find_first_of("0123456789") != std::string_view::npos &&
           text.find_first_not_of("0123456789.,+-% ") == std::string_view::npos;
}

bool may_be_name(std::string_view field)
{
    constexpr std::size_t longest = 40;
    const std::string_view text = exchange::trim_exchange_text(field);
    return !text.empty() && !text.ends_with('?') && common::code_points(text) <= longest;
}

/// Whether two fields are usual names in the same language. A vocabulary may begin with "word" and "Wort".
bool has_usual_names(const Fields& fields)
{
    std::map<Language, int> counts;
    for (const std::string& field : fields) {
        const std::string name = simplified(field);
        for (const UsualName& usual : usual_names)
            counts[usual.language] += usual.name == name ? 1 : 0;
    }
    return std::any_of(counts.begin(), counts.end(), [](const auto& count) { return count.second >= 2; });
}

bool are_different(const Fields& fields)
{
    std::set<std::string> different;
    std::transform(fields.begin(), fields.end(), std::inserter(different, different.end()), simplified);
    return different.size() == fields.size();
}

/// Whether a field is a number in all rows but the first.
bool stands_over_numbers(const std::vector<Fields>& rows)
{
    constexpr std::size_t fewest = 3;
    if (rows.size() <= fewest)
        return false;
    for (std::size_t field = 0; field < rows.front().size(); ++field) {
        const auto holds_number = [&](const Fields& row) { return field < row.size() && is_number(row[field]); };
        if (!holds_number(rows.front()) && std::all_of(rows.begin() + 1, rows.end(), holds_number))
            return true;
    }
    return false;
}

bool begins_with_header(const std::vector<Fields>& rows)
{
    if (rows.empty() || rows.front().size() < 2)
        return false;
    const Fields& first = rows.front();
    if (!std::all_of(first.begin(), first.end(), may_be_name) || !are_different(first))
        return false;
    return has_usual_names(first) || stands_over_numbers(rows);
}

} // namespace

TableFormat recognise_table(std::string_view sample, bool is_whole, std::string_view name, const TableOptions& options)
{
    constexpr char usual_quote = '"';
    TableFormat format;
    format.shape.quote = options.quote.value_or(usual_quote);
    const auto line = separator_line(sample);
    if (line) {
        format.skipped = line->size;
        format.first_line = 2;
        sample.remove_prefix(line->size);
    }
    if (options.separator)
        format.shape.separator = *options.separator;
    else if (line)
        format.shape.separator = line->separator;
    else
        format.shape.separator = separator_of(sample, is_whole, name, format.shape);

    const std::vector<Fields> rows = parsed(sample, is_whole, format.shape).rows;
    format.has_header = options.has_header.value_or(begins_with_header(rows));
    if (format.has_header && !rows.empty()) {
        format.names = names_of_header(rows.front());
    } else {
        std::size_t longest = 0;
        for (const Fields& fields : rows)
            longest = std::max(longest, fields.size());
        format.names = numbers_as_names(longest);
    }
    return format;
}

std::string name_of_separator(char separator)
{
    if (separator == '\t')
        return "TAB";
    return separator == ' ' ? "blank" : std::string(1, separator);
}

std::vector<std::string> numbers_as_names(std::size_t count)
{
    std::vector<std::string> names;
    for (std::size_t number = 1; number <= count; ++number)
        names.push_back(std::to_string(number));
    return names;
}

std::vector<std::string> names_of_header(const std::vector<std::string>& fields)
{
    constexpr std::string_view replacement_character = "\uFFFD";
    std::vector<std::string> names;
    for (const std::string& field : fields) {
        std::string name(common::trim_blanks_and_line_ends(exchange::trim_exchange_text(field)));
        name = common::replace_all(name, "\n", " ");
        name = common::replace_all(name, std::string_view(&exchange::unreadable_mark, 1), replacement_character);
        names.push_back(name.empty() ? std::to_string(names.size() + 1) : name);
    }
    return different(std::move(names));
}

} // namespace cuedrill::decks
