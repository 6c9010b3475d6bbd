#include "bank/corrections.h"
#include "common/int16.h"
#include "common/text.h"
#include "tools/opened_course.h"
#include "tools/verbs.h"

#include <array>
#include <optional>
#include <string>

namespace cuedrill::tools {
namespace {

constexpr std::array<Option, 2> options{
    {{"--question", "TEXT", "The new question."}, {"--answer", "TEXT", "The new answer."}}};

constexpr std::string_view help =
    "NUMBER is that of \"list\". What is not given stays. The levels, the counts and the dates of the record stay, "
    "too:\n"
    "this is for a slip of the pen. Editing in the window begins the record anew.\n"
    "A copy of the course is made first, and the old texts are kept in \"removed.txt\".\n";

/// The text of an option in the form in which the window stores it: with CR LF as line breaks.
std::optional<std::string> text_of(const Arguments& arguments, std::string_view option,
                                   const platform::TextCompare& text_compare)
{
    const std::optional<std::string> value = arguments.value(option);
    if (!value)
        return std::nullopt;
    std::string text;
    for (const char c : *value) {
        if (c == '\n')
            text += common::cr_lf;
        else if (c != '\r')
            text += c;
    }
    if (!common::is_utf8(text))
        throw UsageError("The text of " + std::string(option) + " is not in UTF-8.");
    return text_compare.nfc(std::string(common::trim_blanks(text)));
}

int run(const Arguments& arguments, Surroundings& around)
{
    if (!arguments.has("--question") && !arguments.has("--answer"))
        throw UsageError("Give a question, an answer, or both.");
    const std::int64_t cnt = number_in(arguments.word(1), "NUMBER", 1, common::max_int16);
    OpenedCourse opened(arguments.word(0), OpenedCourse::For::writing, around);
    const bank::Correction correction{.cnt = cnt,
                                      .q = text_of(arguments, "--question", opened.text_compare()),
                                      .a = text_of(arguments, "--answer", opened.text_compare())};
    opened.copy_first();
    try {
        const auto keep = [&](const store::QaTexts& texts) { opened.keep_replaced(texts); };
        if (const auto refusal = bank::correct_record(opened.course(), correction, opened.text_compare(), keep))
            throw Refusal(refusal->words);
    } catch (const store::RecordGone&) {
        throw Refusal("There is no record " + std::to_string(cnt) + ".");
    }
    return done;
}

} // namespace

const Verb& fix_verb()
{
    static const Verb verb{"fix",
                           "Corrects a text of one record without touching its history.",
                           {"COURSE NUMBER", 2, 2, options},
                           help,
                           run};
    return verb;
}

} // namespace cuedrill::tools
