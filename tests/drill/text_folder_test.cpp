// Where the dialogs of import and export begin.
#include "drill/drill_fixture.h"
#include "drill/import_explanation.h"
#include "drill/text_folder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace cuedrill::drill {
namespace {

class Dialogs : public DrillFixture {
protected:
    void SetUp() override
    {
        for (const std::string& made : {documents_folder, downloads})
            std::filesystem::create_directories(made);
        builder.question("France?", "Paris").level(0);
        start();
    }

    /// Chooses "Import", and this file, which does not exist, in its dialog; "" cancels it.
    /// @return the folder in which the dialog began.
    std::string import_begins_in(const std::string& chosen)
    {
        desktop.expect_box(import_explanation, platform::BoxAnswer::yes);
        desktop.expect_file({.path = chosen, .title = "chosen.txt"});
        if (!chosen.empty())
            desktop.expect_box("File not found");
        choose("m_import");
        return desktop.file_dialogs.back().initial_folder;
    }

    /// The same of "Export"; the chosen file is a folder.
    std::string export_begins_in(const std::string& chosen)
    {
        desktop.expect_save_file({.path = chosen, .title = "chosen.txt"});
        if (!chosen.empty()) {
            std::filesystem::create_directories(chosen);
            desktop.expect_box("The file " + chosen + " is not an ordinary file. Choose another name.");
        }
        choose("m_export");
        return desktop.file_dialogs.back().initial_folder;
    }

    const std::string downloads = folder.file("Downloads");
};

TEST_F(Dialogs, begin_in_the_documents_folder)
{
    EXPECT_EQ(import_begins_in(""), documents_folder);
    EXPECT_EQ(export_begins_in(""), documents_folder);
}

TEST_F(Dialogs, begin_where_each_of_them_was_last)
{
    import_begins_in(downloads + "/chosen.txt");
    EXPECT_EQ(import_begins_in(""), downloads);
    EXPECT_EQ(export_begins_in(folder.file("Texts/chosen.txt")), documents_folder);
    EXPECT_EQ(export_begins_in(""), folder.file("Texts"));
    EXPECT_EQ(import_begins_in(""), downloads);
}

TEST_F(Dialogs, stay_where_they_were_after_a_cancel)
{
    import_begins_in(downloads + "/chosen.txt");
    import_begins_in("");
    EXPECT_EQ(import_begins_in(""), downloads);
}

TEST_F(Dialogs, remember_the_folder_for_the_next_run)
{
    import_begins_in(downloads + "/chosen.txt");
    app::TraceLog trace(files, clock, desktop, folder.path().string());
    app::Settings settings(settings_store, trace);
    EXPECT_EQ(TextFolder(settings, files, "last_import_folder", documents_folder).initial(), downloads);
}

TEST_F(Dialogs, begin_in_the_documents_folder_when_the_last_one_is_gone)
{
    import_begins_in(downloads + "/chosen.txt");
    std::filesystem::remove(downloads);
    EXPECT_EQ(import_begins_in(""), documents_folder);
}

TEST_F(Dialogs, leave_the_choice_to_the_platform_without_any_folder)
{
    std::filesystem::remove(documents_folder);
    EXPECT_EQ(import_begins_in(""), "");
    EXPECT_EQ(export_begins_in(""), "");
}

TEST_F(Dialogs, begin_in_the_root_folder_after_a_file_there)
{
    import_begins_in("/no such file.txt");
    EXPECT_EQ(import_begins_in(""), "/");
}

TEST_F(Dialogs, do_without_settings_that_cannot_be_read_or_written)
{
    settings_store.read_failure = settings_store.write_failure = "no access";
    EXPECT_EQ(import_begins_in(downloads + "/chosen.txt"), documents_folder);
    EXPECT_EQ(import_begins_in(""), documents_folder);
}

TEST_F(Dialogs, keep_their_titles_and_filters)
{
    import_begins_in("");
    export_begins_in("");
    EXPECT_EQ(desktop.file_dialogs.at(0).title, "");
    EXPECT_EQ(desktop.file_dialogs.at(0).filter, "Text file (*.txt)|*.txt|All files (*.*)|*.*");
    EXPECT_EQ(desktop.file_dialogs.at(1).title, "Exporting questions and answers to text file");
    EXPECT_EQ(desktop.file_dialogs.at(1).filter, "Text file (*.txt)|*.txt|All files (*.*)|*.*");
}

} // namespace
} // namespace cuedrill::drill
