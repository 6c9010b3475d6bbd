#include "exchange/import_report.h"

#include "bank/new_records.h"
#include "common/text.h"
#include "store/schema.h"

#include <cstddef>

namespace cuedrill::exchange {
namespace {

std::string too_long_part(const char* what, const ReadText& part)
{
    // No text has more characters than bytes, so most need not be counted.
    if (part.text.size() + part.cut_off <= std::size_t{store::longest_text})
        return {};
    const std::string reason = bank::too_long_text(what, common::code_points(part.text) + part.cut_off);
    return reason.empty() ? reason : reason + " " + quoted_line(part.text);
}

std::string unreadable_part(const char* what, const ReadText& part)
{
    if (part.unreadable == 0)
        return {};
    return std::to_string(part.unreadable) + (part.unreadable == 1 ? " character" : " characters") + " of the " + what +
           " could not be read. " + quoted_line(part.text);
}

std::string joined(const std::string& first, const std::string& second)
{
    return first + (first.empty() || second.empty() ? "" : " ") + second;
}

} // namespace

std::string too_long(const ReadRecord& record)
{
    return joined(too_long_part("question", record.question), too_long_part("answer", record.answer));
}

void ImportReport::add_read(const ReadRecord& record)
{
    const std::string words =
        joined(unreadable_part("question", record.question), unreadable_part("answer", record.answer));
    if (words.empty())
        return;
    ++unreadable_;
    lines_.add(record_name(record.number, record.place), words);
}

void ImportReport::add_refused(const ReadRecord& record, const std::string& reason)
{
    ++refused_;
    lines_.add(record_name(record.number, record.place), reason);
}

std::string ImportReport::summary() const
{
    const std::string refused = refused_ == 0 ? "" : "Refused, and not stored: " + std::to_string(refused_);
    const std::string unreadable =
        unreadable_ == 0 ? "" : "Questions with characters that could not be read: " + std::to_string(unreadable_);
    return refused + std::string(refused.empty() || unreadable.empty() ? "" : common::cr_lf) + unreadable;
}

} // namespace cuedrill::exchange
