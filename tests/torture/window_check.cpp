#include "torture/window_check.h"

#include "common/errors.h"
#include "keep/copy_names.h"
#include "keep/removed_entry.h"
#include "platform/sqlite/sqlite_database.h"
#include "store/schema.h"
#include "torture/question_texts.h"
#include "torture/window_folder.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <variant>

namespace cuedrill::torture {
namespace {

/// Says what is wrong.
[[noreturn]] void complain(const std::string& words)
{
    throw std::runtime_error(words);
}

void require(bool holds, const std::string& words)
{
    if (!holds)
        complain(words);
}

std::string name_in(const std::string& path)
{
    return path.substr(parent_of(path).size());
}

bool is_removed_file(const std::string& path)
{
    return parent_of(path) == kept_folder && name_in(path).starts_with("removed") && path.ends_with(".txt");
}

bool is_draft(const std::string& path)
{
    return parent_of(path) == kept_folder && name_in(path).starts_with("draft-") && path.ends_with(".txt");
}

bool same_but_shown(const WindowRow& a, const WindowRow& b)
{
    return a.texts.q == b.texts.q && a.texts.a == b.texts.a && a.history == b.history;
}

bool same_texts(const WindowRow& a, const WindowRow& b)
{
    return a.texts.q == b.texts.q && a.texts.a == b.texts.a;
}

std::string words_of(const std::pair<std::string, std::string>& texts)
{
    return "\"" + texts.first + "\" \"" + texts.second + "\"";
}

} // namespace

void WindowCheck::take(std::string_view output)
{
    output_ += output;
    for (const std::string& line : take_lines(output_)) {
        const bool ends = report_.take_line(line);
        for (const store::QaTexts& texts : report_.step().texts)
            known_.emplace(texts.q, texts.a);
        if (ends)
            end_act();
    }
}

void WindowCheck::end_act()
{
    ++acts_;
    const WindowStep& step = report_.step();
    const WindowRows before = std::exchange(state_, report_.state()).rows;
    switch (step.act) {
    case Act::edit:
    case Act::remove:
        must_keep_.emplace(before.at(step.record).texts.q, before.at(step.record).texts.a);
        break;
    case Act::leave:
    case Act::draft:
        must_keep_.emplace(texts_of_step().q, texts_of_step().a);
        break;
    case Act::save_draft:
        must_keep_.erase({texts_of_step().q, texts_of_step().a});
        break;
    default:
        break;
    }
    for (const auto& [number, row] : state_.rows)
        known_.emplace(row.texts.q, row.texts.a);
    for (const auto& [name, value] : state_.settings)
        settings_[name].insert(value);
}

std::string WindowCheck::complaint(const DiskImage& image, bool after_power_cut)
{
    try {
        const WindowState found = course_in(image);
        check_course(found);
        check_kept(image, found.rows, after_power_cut ? 1 : 0);
        check_copies(image);
        check_export(image);
        check_settings(image, after_power_cut);
        return {};
    } catch (const std::exception& error) {
        return std::string(report_.under_way() ? "while \"" : "after \"") + name_of(report_.step().act) +
               "\": " + error.what();
    }
}

void WindowCheck::go_on_with(const DiskImage& image)
{
    const WindowState found = course_in(image);
    must_keep_ = texts_that_must_be_kept(found.rows);
    state_.rows = found.rows;
    state_.params = found.params;
    const auto exported = image.find(window_export);
    state_.exported = exported == image.end() ? 0 : number_of(exported->second);
    state_.settings = settings_in(image);
    for (const auto& [number, row] : state_.rows)
        known_.emplace(row.texts.q, row.texts.a);
    report_ = {};
    output_.clear();
}

void WindowCheck::go_on_with(const DiskImage& image, const WindowCheck& other)
{
    known_ = other.known_;
    for (const auto& [path, bytes] : image) {
        if (is_removed_file(path))
            known_.merge(TextSet(kept_texts(bytes)));
    }
    must_keep_ = other.texts_that_must_be_kept(course_in(image).rows);
    go_on_with(image);
}

void WindowCheck::check_course(const WindowState& found) const
{
    check_records(found.rows);
    check_params(found.params);
}

/// The records are those after the last act, or those that the act under way may lead to.
void WindowCheck::check_records(const WindowRows& found) const
{
    const WindowRows& before = state_.rows;
    if (found == before)
        return;
    const std::string words = "the course does not hold what was acknowledged";
    require(report_.under_way(), words);
    const WindowStep& step = report_.step();
    const bool new_records = report_.under_way() &&
                             (step.act == Act::insert || step.act == Act::save_draft || step.act == Act::import_texts);
    std::size_t changed = 0;
    for (const auto& [number, row] : before) {
        const auto now = found.find(number);
        if (now == found.end()) {
            require(may_be(Act::remove) && number == step.record, words);
        } else if (!same_texts(row, now->second)) {
            require(may_be(Act::edit) && number == step.record && now->second.texts.q == texts_of_step().q &&
                        now->second.texts.a == texts_of_step().a,
                    words);
        } else if (!same_but_shown(row, now->second)) {
            const bool judged = may_be(Act::know) || may_be(Act::know_not) || may_be(Act::answer);
            require((judged && number == step.record) || (may_be(Act::edit) && number == step.record) ||
                        may_be(Act::undo) || may_be(Act::reset_all),
                    words);
            ++changed;
        }
    }
    require(changed <= 1 || may_be(Act::reset_all), words);
    std::size_t added = 0;
    for (const auto& [number, row] : found) {
        if (before.contains(number))
            continue;
        require(new_records && added < step.texts.size(), "the course holds a record that nobody has saved");
        require(row.texts.q == step.texts[added].q && row.texts.a == step.texts[added].a,
                "the course does not hold the record as it was saved");
        ++added;
    }
}

/// An option is as it was after the last act, unless it is being changed.
void WindowCheck::check_params(const NamedValues& found) const
{
    if (may_be(Act::option))
        return;
    for (const char* const name :
         {"course_title", "invert", "random_mode", "list_mode", "always_type", "target_level"}) {
        const auto before = state_.params.find(name);
        const auto now = found.find(name);
        require((before == state_.params.end() && now == found.end()) ||
                    (before != state_.params.end() && now != found.end() && before->second == now->second) ||
                    (before == state_.params.end() && may_be(Act::open)),
                std::string("the option ") + name + " is not as it was acknowledged");
    }
}

WindowCheck::TextSet WindowCheck::texts_that_must_be_kept(const WindowRows& found) const
{
    TextSet texts = must_keep_;
    const WindowStep& step = report_.step();
    if (may_be(Act::edit) || may_be(Act::remove)) {
        const store::QaTexts& old = state_.rows.at(step.record).texts;
        const auto now = found.find(step.record);
        if (now == found.end() || now->second.texts.q != old.q || now->second.texts.a != old.a)
            texts.emplace(old.q, old.a);
    }
    if (may_be(Act::save_draft)) {
        const bool saved = std::any_of(found.begin(), found.end(), [&](const auto& record) {
            return record.second.texts.q == texts_of_step().q && record.second.texts.a == texts_of_step().a;
        });
        if (saved)
            texts.erase({texts_of_step().q, texts_of_step().a});
    }
    return texts;
}

WindowCheck::TextSet WindowCheck::kept_texts(const std::string& bytes)
{
    const auto [found, is_new] = kept_.try_emplace(number_of(bytes));
    if (is_new) {
        for (const store::QaTexts& texts : kept_in(bytes))
            found->second.emplace(texts.q, texts.a);
    }
    return found->second;
}

/// @param most_torn how many texts may be those of an entry that was being appended.
void WindowCheck::check_kept(const DiskImage& image, const WindowRows& found, std::ptrdiff_t most_torn)
{
    TextSet kept;
    for (const auto& [path, bytes] : image) {
        if (!is_removed_file(path) && !is_draft(path))
            continue;
        require(is_removed_file(path) || bytes.ends_with(keep::entry_end), path + " is not a whole draft");
        kept.merge(kept_texts(bytes));
    }
    for (const auto& texts : texts_that_must_be_kept(found))
        require(kept.contains(texts), "removed.txt has lost " + words_of(texts));
    const auto is_unknown = [this](const Texts& texts) { return !known_.contains(texts); };
    require(std::count_if(kept.begin(), kept.end(), is_unknown) <= most_torn,
            "removed.txt holds a text that nobody has typed");
}

void WindowCheck::check_copies(const DiskImage& image)
{
    for (const auto& [path, bytes] : image) {
        if (!keep::time_of_copy(name_in(path)) || sound_copies_.contains(number_of(bytes)))
            continue;
        try {
            for (const auto& [number, row] : read_course(bytes, {}).rows)
                require(known_.contains({row.texts.q, row.texts.a}), "it holds a record that never was");
        } catch (const std::exception& error) {
            complain("the copy " + path + " is not sound: " + error.what());
        }
        sound_copies_.insert(number_of(bytes));
    }
}

/// The exported file is the one after the last act, or a whole new one.
void WindowCheck::check_export(const DiskImage& image) const
{
    const auto file = image.find(window_export);
    const std::size_t found = file == image.end() ? 0 : number_of(file->second);
    if (found == state_.exported)
        return;
    require(may_be(Act::export_texts) && found != 0, "the exported file is not the one that was acknowledged");
    const std::string words = "the exported file is neither the old one nor a whole new one";
    // The line before the last one is read as a part of the last answer.
    const std::size_t end = file->second.rfind("\r\n-----");
    require(file->second.ends_with("questions and answers exported\r\n") && end != std::string::npos, words);
    TextSet exported;
    for (const store::QaTexts& texts : records_in(file->second.substr(0, end)))
        exported.emplace(texts.q, texts.a);
    TextSet expected;
    for (const auto& [number, row] : state_.rows)
        expected.emplace(row.texts.q, row.texts.a);
    require(exported == expected, words);
}

/// All settings of the program. Those of the toolkit must be readable, too.
NamedValues WindowCheck::settings_in(const DiskImage& image)
{
    NamedValues settings;
    for (const auto& [path, bytes] : image) {
        if (!path.ends_with(".ini") && !path.ends_with(".conf"))
            continue;
        const auto [values, is_new] = read_settings_.try_emplace({path, number_of(bytes)});
        // A name of its own for each: the toolkit remembers what it has read under a name.
        if (is_new)
            values->second =
                settings_of(folder_.write("settings-" + std::to_string(read_settings_.size()), bytes), name_in(path));
        if (parent_of(path) == settings_folder)
            settings.insert(values->second.begin(), values->second.end());
    }
    return settings;
}

void WindowCheck::check_settings(const DiskImage& image, bool may_be_older)
{
    const NamedValues found = settings_in(image);
    // They change while a course is opened, a window is closed, or a folder is chosen for texts.
    const bool may_change =
        may_be(Act::close) || may_be(Act::open) || may_be(Act::import_texts) || may_be(Act::export_texts);
    if (!may_be_older && !may_change)
        require(found == state_.settings, "the settings are not as they were acknowledged");
    for (const auto& [name, value] : state_.settings)
        require(may_be_older || found.contains(name), "the setting \"" + name + "\" is gone");
    for (const auto& [name, value] : found) {
        const auto former = settings_.find(name);
        const bool is_mark = name.ends_with("sound_courses"); // it differs each time
        require(is_mark ? value.ends_with(window_course) : former == settings_.end() || former->second.contains(value),
                "the setting \"" + name + "\" has a value that it never had");
    }
}

WindowState WindowCheck::course_in(const DiskImage& image)
{
    const auto course = image.find(window_course);
    require(course != image.end(), "the course is gone");
    const auto journal = image.find(std::string(window_course) + "-journal");
    const std::string journal_bytes = journal == image.end() ? std::string() : journal->second;
    const auto [found, is_new] =
        courses_.try_emplace({number_of(course->second), journal_bytes.empty() ? 0 : number_of(journal_bytes)});
    if (is_new) {
        try {
            found->second = read_course(course->second, journal_bytes);
        } catch (const std::exception& error) {
            courses_.erase(found);
            complain(std::string("the course cannot be used: ") + error.what());
        }
    }
    return found->second;
}

WindowState WindowCheck::read_course(const std::string& course, const std::string& journal)
{
    const std::string path = folder_.write(window_course, course);
    std::filesystem::remove(path + "-journal");
    if (!journal.empty())
        folder_.write(std::string(window_course) + "-journal", journal);
    platform::sqlite::SqliteDatabase database(text_compare_, std::chrono::milliseconds(0));
    database.open(path, store::course_tables());
    const platform::Rows findings = database.query("PRAGMA integrity_check");
    const auto* const finding = findings.empty() ? nullptr : std::get_if<std::string>(&findings[0].field(0));
    require(finding != nullptr && *finding == "ok", "the engine finds damage");
    return {.rows = rows_of(database), .params = params_of(database), .settings = {}};
}

} // namespace cuedrill::torture
