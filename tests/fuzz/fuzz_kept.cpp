// What the program keeps beside courses: entries of "removed.txt", drafts of other processes, notes beside copies and
// the names of copies.
//
// The first byte of the input says by its remainder after division by 3 what the others are, in parts with a byte 1E
// between two of them:
//   0  an entry of "removed.txt": the question, the answer, the path of the course;
//   1  a file that is called like a draft, and the present "removed.txt", if any;
//   2  a note, the name of the newest copy, the mark of the course.
#include "common/errors.h"
#include "exchange/question_file.h"
#include "exchange/question_text.h"
#include "exchange/text_decoding.h"
#include "fakes/fake_files.h"
#include "fuzz/fuzzing.h"
#include "keep/copy_names.h"
#include "keep/copy_note.h"
#include "keep/draft_file.h"
#include "keep/removed_entry.h"
#include "keep/removed_file.h"
#include "platform/icu/icu_text_compare.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace cuedrill;
using Texts = std::pair<std::string, std::string>;

const platform::TextCompare& text_compare()
{
    static const platform::icu::IcuTextCompare compare;
    return compare;
}

std::vector<std::string> parts_of(std::string_view input)
{
    std::vector<std::string> parts;
    for (bool more = true; more;) {
        const std::size_t end = input.find('\x1E');
        parts.emplace_back(input.substr(0, end));
        more = end != std::string_view::npos;
        input.remove_prefix(more ? end + 1 : input.size());
    }
    return parts;
}

std::string part(const std::vector<std::string>& parts, std::size_t place)
{
    return place < parts.size() ? parts[place] : std::string();
}

std::string entry_of(const Texts& texts, const std::string& course)
{
    const keep::RemovedTexts removed{.when = common::DateTime::from_seconds(4'000'000'000),
                                     .course = course,
                                     .reason = keep::Reason::replaced,
                                     .texts = {texts.first, texts.second}};
    std::string entry = keep::entry_of(removed, text_compare());
    // As if a question that is begun in the answer were not ended.
    const std::string end = "\r\n@A@\r\n\r\n" + std::string(keep::entry_end);
    if (fuzz::is_broken() && entry.ends_with(end))
        entry.replace(entry.size() - end.size(), end.size(), "\r\n\r\n" + std::string(keep::entry_end));
    return entry;
}

/// The records that an import of the file finds.
std::vector<Texts> records_in(const std::string& bytes)
{
    fakes::FakeFiles files;
    files.files["removed.txt"] = bytes;
    exchange::QuestionFile file(files.begin_reading("removed.txt", bytes.size()));
    std::vector<Texts> records;
    for (auto step = file.step(); step != exchange::QuestionFile::Step::end; step = file.step()) {
        if (step == exchange::QuestionFile::Step::record)
            records.emplace_back(text_compare().nfc(file.record().question.text),
                                 text_compare().nfc(file.record().answer.text));
    }
    return records;
}

/// A course holds valid texts in one form without NUL.
std::string course_text(std::string text)
{
    std::erase(text, '\0');
    return text_compare().nfc(text);
}

void check_entry(const std::vector<std::string>& parts)
{
    const Texts texts{course_text(part(parts, 0)), course_text(part(parts, 1))};
    const Texts before{"question before", "answer before"};
    const Texts behind{"question behind", "answer behind"};
    const std::string entry = entry_of(texts, part(parts, 2));
    fuzz::require(entry.starts_with(exchange::comment_start), "an entry begins with a comment");
    fuzz::require(entry.ends_with(keep::entry_end), "an entry ends with its last line");

    const std::vector<Texts> records =
        records_in(std::string(exchange::utf8_mark) + entry_of(before, "a.crs") + entry + entry_of(behind, "b.crs"));
    fuzz::require(records.size() >= 2 && records.front() == before, "the entry before is read as it is");
    fuzz::require(records.back() == behind, "the entry behind is read as it is");
    const bool comes_back = entry.find("/*/ An import does not bring this back as it was.") == std::string::npos;
    if (comes_back)
        fuzz::require(records.size() == 3 && records[1] == texts, "an import brings the texts back");
}

void check_draft(const std::vector<std::string>& parts)
{
    const std::string draft = "data/draft-1.txt";
    const std::string removed = "data/removed.txt";
    fakes::FakeFiles files;
    files.folders.insert("data");
    files.files[draft] = part(parts, 0);
    if (parts.size() > 1)
        files.files[removed] = parts[1];
    const auto earlier = files.files;

    keep::RemovedFile file(files, "data");
    const keep::LeftDrafts result = keep::DraftFile(files, "data").move_left_drafts(file);
    fuzz::require(result.failures.empty(), "nothing fails");
    const std::string begin = std::string(exchange::utf8_mark) + std::string(exchange::comment_start);
    const bool is_draft = part(parts, 0).starts_with(begin) && part(parts, 0).ends_with(keep::entry_end);
    fuzz::require(result.kept == (is_draft ? 1 : 0), "exactly drafts are kept");
    if (!is_draft) {
        fuzz::require(files.files.at(draft) == part(parts, 0), "another file is left alone");
        fuzz::require((files.files.count(removed) != 0) == (parts.size() > 1) &&
                          (parts.size() < 2 || files.files.at(removed) == parts[1]),
                      "\"removed.txt\" is as before");
        return;
    }
    fuzz::require(files.files.count(draft) == 0, "a draft that is kept is gone");
    const std::string entry = part(parts, 0).substr(exchange::utf8_mark.size());
    const std::string& now = files.files.at(removed);
    fuzz::require(now.starts_with(exchange::utf8_mark) && now.ends_with(entry), "the draft is in \"removed.txt\"");
    const bool renamed = files.files.count("data/removed.1.txt") != 0;
    const std::string& old = part(parts, 1);
    fuzz::require(renamed ? files.files.at("data/removed.1.txt") == old : now.starts_with(old),
                  "nothing that was kept before is lost");
}

void check_note(const std::vector<std::string>& parts)
{
    const std::string text = part(parts, 0);
    const std::string newest = part(parts, 1);
    const std::string mark = part(parts, 2);
    const bool tells = keep::note_tells(text, newest, mark);
    fuzz::require(!tells || text.find("\n" + newest + "\n") != std::string::npos, "a note that tells a name holds it");
    fuzz::require(!tells || text.ends_with("\n" + mark + "\n"), "a note that tells a mark ends with it");
    const std::string made = keep::note_text({text, newest, mark});
    fuzz::require(keep::note_tells(made, newest, mark), "a note tells what was written into it");
    fuzz::require(!keep::note_tells(made, newest, mark + "x") && !keep::note_tells(made, newest + "x", mark),
                  "a note tells nothing else");

    const auto time = keep::time_of_copy(newest);
    fuzz::require(!time || keep::copy_name(*time) == newest, "the time of a copy is that in its name");
    fuzz::require(!keep::folder_name(text).empty() && keep::folder_name(text).find('/') == std::string::npos,
                  "a folder for copies has a name");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::vector<std::string> parts = parts_of(fuzz::text_of(data, size).substr(1));
    switch (data[0] % 3) {
    case 0:
        check_entry(parts);
        break;
    case 1:
        check_draft(parts);
        break;
    default:
        check_note(parts);
        break;
    }
    return 0;
}
