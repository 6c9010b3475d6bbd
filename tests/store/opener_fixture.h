#pragma once

#include "course_fixture.h"
#include "fake_main_window_host.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_dialog_host.h"
#include "fakes/fake_settings.h"
#include "platform/system/system_files.h"
#include "store/course_opener.h"

#include <filesystem>
#include <string>
#include <vector>

namespace cuedrill::store {

inline const std::string opener_title = "Specify name of Cuedrill file to open or create";
inline const std::string last_course = fakes::FakeSettings::full_key("CUEDRILL", "general", "last_db_path");

/// The opening of courses, with the trace switched on and every box under the test's control.
class OpenerFixture : public CourseFixture {
protected:
    fakes::TempFolder program_folder;
    std::string switch_file = program_folder.write("trace.flg", "");
    fakes::FakeDesktop desktop;
    fakes::FakeDialogHost form2;
    fakes::FakeSettings settings_store;
    fakes::FakeMainWindowHost host;
    platform::system::SystemFiles files;
    app::TraceLog trace{files, clock, desktop, program_folder.path().string()};
    app::Settings settings{settings_store, trace};
    CourseOpener opener{
        course,    params, host, {files, clock, desktop, form2, settings, trace}, program_folder.path().string(),
        clock.time};

    OpenerFixture()
    {
        // A box may stay for hours: no transaction and no statement may be open meanwhile.
        desktop.on_box = [this] {
            EXPECT_EQ(database.transaction_depth(), 0);
            EXPECT_EQ(database.open_recordsets(), 0);
        };
    }

    void remember(const std::string& path) { settings_store.values[last_course] = path; }
    [[nodiscard]] std::string remembered() const
    {
        const auto found = settings_store.values.find(last_course);
        return found == settings_store.values.end() ? "nothing" : found->second;
    }

    void expect_dialog_answer(const std::string& path)
    {
        desktop.expect_file({.path = path, .title = std::filesystem::path(path).filename().string()});
    }

    /// The messages of the trace so far.
    [[nodiscard]] std::vector<std::string> traced() const
    {
        std::vector<std::string> messages;
        if (!std::filesystem::exists(program_folder.file("trace.txt")))
            return messages;
        const std::string text = program_folder.read("trace.txt");
        const std::string separator = " apertura_db";
        for (std::size_t start = 0; start < text.size();) {
            const std::size_t end = text.find("\r\n", start);
            const std::string line = text.substr(start, end - start);
            const std::size_t message = line.find(separator);
            messages.push_back(message == std::string::npos ? line : line.substr(message + 1));
            start = end + 2;
        }
        return messages;
    }

    void expect_open(const std::string& path) const
    {
        EXPECT_TRUE(course.is_open());
        EXPECT_EQ(course.db_path, path);
        EXPECT_TRUE(host.loaded);
        EXPECT_EQ(remembered(), path);
        EXPECT_FALSE(form2.loaded);
    }

    void expect_nothing_open() const
    {
        EXPECT_FALSE(course.is_open());
        EXPECT_FALSE(engine.database.is_open());
        EXPECT_FALSE(host.loaded);
    }

    static platform::MessageBox cannot_open(const std::string& path, const std::string& reason)
    {
        return {.text = "The course " + path + " cannot be opened.\r\n\r\n" + reason,
                .icon = platform::BoxIcon::exclamation};
    }
};

} // namespace cuedrill::store
