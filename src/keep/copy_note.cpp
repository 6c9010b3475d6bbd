#include "keep/copy_note.h"

namespace cuedrill::keep {
namespace {

std::string last_lines(std::string_view newest, std::string_view mark)
{
    return "\n\nThe newest copy is\n" + std::string(newest) + "\n\nIt holds the course in the state\n" +
           std::string(mark) + "\n";
}

} // namespace

std::string note_text(const CopyNote& note)
{
    return "This folder holds copies of the course\n" + note.course + last_lines(note.newest, note.mark);
}

bool note_tells(std::string_view text, std::string_view newest, std::string_view mark)
{
    return text.ends_with(last_lines(newest, mark));
}

} // namespace cuedrill::keep
