#pragma once

#include "platform/icu/icu_text_compare.h"

#include <filesystem>
#include <string>

namespace cuedrill::bench {

/// A folder of its own, removed at the end.
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

/// The question and answer of record `number`, about as long and as varied as those of a language course.
std::string question_of(int number);
std::string answer_of(int number);

/// Writes a question text file of `records` records.
void write_question_text(const std::string& path, int records);

/// Makes a course of `records` records: a third never tested, the others at all levels and ages.
void make_sample_course(const std::string& path, const platform::TextCompare& text_compare, int records);

/// Where the sample courses are kept from which all others are copied. It goes with the process that has asked for it
/// first; those that are forked from it use it, too.
const WorkFolder& sample_folder();

/// Makes such a course in the folder and gives its path: each measured side has one of its own, so that all start from
/// the same.
std::string fresh_sample(const WorkFolder& folder, int records);

} // namespace cuedrill::bench
