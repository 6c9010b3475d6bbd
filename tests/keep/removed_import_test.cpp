#include "exchange/importer_fixture.h"
#include "keep/removed_entry.h"
#include "keep/removed_file.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::keep {
namespace {

using exchange::Texts;

std::string many(const std::string& text, int times)
{
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

/// "removed.txt" is imported into an empty course.
class RemovedImport : public exchange::ImportFixture {
protected:
    void keep(const std::string& question, const std::string& answer)
    {
        const std::string entry = entry_of({.when = clock.now(),
                                            .course = course_file,
                                            .reason = Reason::deleted,
                                            .texts = {.q = question, .a = answer}},
                                           engine.text_compare);
        has_remark = entry.find("does not bring this back") != std::string::npos;
        EXPECT_EQ(removed.append(entry), "");
    }

    exchange::Outcome import_removed() { return import_file(folder.file("data/removed.txt")); }

    RemovedFile removed{files, folder.file("data")};
    std::string course_file = "/home/anna/Capitals.crs";
    bool has_remark = false; ///< of the entry kept last
};

TEST_F(RemovedImport, brings_every_record_back_byte_for_byte)
{
    const std::vector<std::string> texts = {"France?",
                                            "Zürich, Łódź, \u65E5\u672C",
                                            "a\r\nb",
                                            "a\r\n\r\n\r\nb",
                                            "/*/",
                                            "/*/ a comment?",
                                            "a /*/ b",
                                            "/*/ a\r\nb",
                                            "@",
                                            "@Q",
                                            "@A",
                                            "Q@",
                                            "anna@Q.example",
                                            "a\r",
                                            "\ra",
                                            "a\n",
                                            "\n\na\nb\n",
                                            "a\rb",
                                            "\u2028a\u00A0",
                                            "------------------------",
                                            "/*/ ------------------------",
                                            "\uFEFFa",
                                            "<b>&amp;</b> 'x' \"y\" \\n",
                                            std::string(200, 'x'),
                                            many("\U0001F600", 200),
                                            many("a\r\n", 66) + "b"};
    Texts expected;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const std::string other = std::to_string(i);
        keep(other, texts[i]);
        EXPECT_FALSE(has_remark) << texts[i];
        expected.emplace_back(other, texts[i]);
        keep(texts[i], other);
        EXPECT_FALSE(has_remark) << texts[i];
        expected.emplace_back(texts[i], other);
    }
    keep("a @Q@ b", "c @A@ d");
    EXPECT_FALSE(has_remark);
    expected.emplace_back("a @Q@ b", "c @A@ d");
    const exchange::Outcome outcome = import_removed();
    EXPECT_EQ(outcome.failure, "");
    EXPECT_TRUE(outcome.empty.empty());
    EXPECT_EQ(outcome.lines, "");
    EXPECT_EQ(stored(), expected);
}

TEST_F(RemovedImport, brings_the_records_around_any_text_back)
{
    const Texts odd = {{"a @A@ b", "c"},
                       {"a", "b @Q@ c"},
                       {"a", "@Q@"},
                       {"a", "b @Q@ c @A@ d"},
                       {"@A@ @Q@", "@Q@ @A@ @Q@"},
                       {"a @A@ b @Q@ c", "d"},
                       {"a\r\n/*/ b", "c"},
                       {"a", "b\r\n/*/ c"},
                       {"a", "b\r\n/*/ @Q@"},
                       {" a", "\tb "},
                       {"a\r\n", "\r\nb"},
                       {std::string(201, 'a'), "b"},
                       {"a", many("\U0001F600", 201)},
                       {std::string("a\0b", 3), "c"},
                       {"e\u0301", "a"},
                       {"", "b"},
                       {"a", ""},
                       {"", ""},
                       {std::string(100000, 'a'), std::string(100000, '@')}};
    for (std::size_t i = 0; i < odd.size(); ++i) {
        keep("before " + std::to_string(i), "answer");
        keep(odd[i].first, odd[i].second);
        EXPECT_TRUE(has_remark) << i;
        keep("after " + std::to_string(i), "answer");
    }
    EXPECT_EQ(import_removed().failure, "");
    const Texts found = stored();
    for (std::size_t i = 0; i < odd.size(); ++i) {
        EXPECT_EQ(std::count(found.begin(), found.end(), odd[i]), 0) << i << ": the remark would be wrong";
        for (const char* place : {"before ", "after "})
            EXPECT_EQ(
                std::count(found.begin(), found.end(), std::pair(place + std::to_string(i), std::string("answer"))), 1)
                << place << i;
    }
}

TEST_F(RemovedImport, reads_a_path_that_is_no_text)
{
    course_file = "/home/anna/\xFF.crs";
    keep("Zürich?", "Łódź");
    EXPECT_EQ(import_removed().lines, "");
    EXPECT_EQ(stored(), (Texts{{"Zürich?", "Łódź"}}));
}

} // namespace
} // namespace cuedrill::keep
