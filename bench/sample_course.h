#pragma once

#include "platform/icu/icu_text_compare.h"

#include <filesystem>
#include <string>

namespace cuedrill::bench {

/// A temporary folder, removed on destruction.
class WorkFolder {
public:
    WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    ~WorkFolder();

    [[nodiscard]] std::string file(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

/// The question and the answer of record `number`, about as long and as varied as in a language course.
std::string question_of(int number);
std::string answer_of(int number);

/// Writes a question text file of `records` records.
void write_question_text(const std::string& path, int records);

/// Creates a course of `records` records. A third were never tested; the others are at levels 0 to 10 and were last
/// tested up to 4 days ago.
void make_sample_course(const std::string& path, const platform::TextCompare& text_compare, int records);

/// The folder of the sample courses that `fresh_sample` copies. The first call creates it, and the process of that call
/// removes it at its end. Call it once before forking, so that the processes share it.
const WorkFolder& sample_folder();

/// Copies a sample course of `records` records into `folder` and returns the path of the copy. Each side of a
/// measurement has its own copy, so that all start from the same state.
std::string fresh_sample(const WorkFolder& folder, int records);

} // namespace cuedrill::bench
