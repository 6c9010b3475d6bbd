#pragma once

#include "common/date_time.h"
#include "fakes/course_builder.h"
#include "fakes/fake_clock.h"
#include "fakes/temp_folder.h"
#include "keep/copies.h"
#include "platform/system/system_directories.h"
#include "platform/system/system_files.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace cuedrill::tools {

/// Runs the tool on courses in a temporary folder.
class ToolFixture : public testing::Test {
protected:
    /// Runs the tool and returns its exit code.
    int run(const std::vector<std::string>& line);

    /// A course of some pages.
    static fakes::CourseBuilder many(int records = 400);

    /// Has a copy of the course made as if it were that time.
    void make_copy(const std::string& course_path, common::DateTime time);

    /// Overwrites a page of the file, counted from 1.
    static void overwrite_page(const std::string& path, std::size_t page);

    fakes::TempFolder folder;
    fakes::FakeClock clock;
    platform::system::SystemFiles files;
    platform::system::SystemDirectories folders;
    keep::Copies copies{files, folders, folder.file("data")};
    std::string out; ///< what the last run has printed
    std::string err;
};

} // namespace cuedrill::tools
