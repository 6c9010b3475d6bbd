#include "exchange/decks/vocabulary_writer.h"

#include "common/number_format.h"
#include "exchange/decks/xml_escaping.h"
#include "exchange/record_lines.h"
#include "store/course.h"

#include <string_view>

namespace cuedrill::decks {
namespace {

/// Of names and titles, a character that cannot be written is no loss worth a message.
std::string escaped(std::string_view text)
{
    bool replaced = false;
    return xml_escaped(text, replaced);
}

std::string date_of(const common::DateTime& date)
{
    const common::CalendarFields fields = date.fields();
    return common::format_padded(fields.year, 4) + "-" + common::format_padded(fields.month, 2) + "-" +
           common::format_padded(fields.day, 2);
}

std::string identifier(int id, std::string_view name)
{
    return "    <identifier id=\"" + std::to_string(id) + "\">\n      <name>" + escaped(name) +
           "</name>\n    </identifier>\n";
}

std::string head(const VocabularyForm& form)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE kvtml PUBLIC \"kvtml2.dtd\" \"http://edu.kde.org/kvtml/kvtml2.dtd\">\n"
           "<kvtml version=\"2.0\">\n"
           "  <information>\n"
           "    <generator>Cuedrill</generator>\n"
           "    <title>" +
           escaped(form.course_title) +
           "</title>\n"
           "    <date>" +
           date_of(form.written) +
           "</date>\n"
           "  </information>\n"
           "  <identifiers>\n" +
           identifier(0, form.question_language) + identifier(1, form.answer_language) +
           "  </identifiers>\n"
           "  <entries>\n";
}

std::string translation(int id, const std::string& text, bool& replaced)
{
    return "      <translation id=\"" + std::to_string(id) + "\">\n        <text>" + xml_escaped(text, replaced) +
           "</text>\n      </translation>\n";
}

} // namespace

WrittenVocabulary write_vocabulary(platform::Replacement& file, platform::Recordset& rows, const VocabularyForm& form)
{
    WrittenVocabulary result;
    exchange::RecordLines lines;
    file.write(head(form));
    for (; !rows.eof(); rows.move_next()) {
        const std::string question = store::stored_text(rows.field("q"));
        bool replaced = false;
        std::string entry = "    <entry id=\"" + std::to_string(result.count) + "\">\n";
        entry += translation(0, question, replaced);
        entry += translation(1, store::stored_text(rows.field("a")), replaced);
        entry += "    </entry>\n";
        file.write(entry);
        ++result.count;
        if (replaced) {
            ++result.changed;
            lines.add(exchange::record_name(result.count),
                      "It has characters that the format cannot hold. " + exchange::quoted_line(question));
        }
    }
    file.write("  </entries>\n</kvtml>\n");
    result.lines = lines.text();
    return result;
}

} // namespace cuedrill::decks
