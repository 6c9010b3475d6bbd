#include "torture/scripted_user.h"

#include "keep/copy_names.h"
#include "platform/system/system_clock.h"
#include "store/records.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QWidget>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace cuedrill::torture {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr auto between_looks = 5ms;

/// Longer than the time in which a second press of a key does not count.
constexpr auto after_a_key = 200ms;

/// Far more than what is waited for ever takes.
constexpr auto longest_wait = 60s;

std::string contents(const fs::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void process_events_for(std::chrono::milliseconds duration)
{
    const auto end = std::chrono::steady_clock::now() + duration;
    do {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    } while (std::chrono::steady_clock::now() < end);
}

void answer(QMessageBox& box)
{
    const std::string text = box.text().toStdString();
    std::cerr << text << std::endl;
    for (const char* const failure : {"cannot", "could not", "has stopped", "not saved", "not exist", "not known"}) {
        if (text.find(failure) != std::string::npos)
            std::_Exit(EXIT_FAILURE);
    }
    const bool refused = text.find("open the exported file") != std::string::npos;
    if (QAbstractButton* const button = box.button(refused ? QMessageBox::No : QMessageBox::Yes))
        button->click();
    else
        box.accept();
}

} // namespace

BoxUser::BoxUser()
{
    watch_.callOnTimeout([this] { look(); });
    watch_.start(between_looks);
}

void BoxUser::look()
{
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    constexpr const char* answered = "answered";
    if (dialog == nullptr || dialog->property(answered).toBool())
        return;
    dialog->setProperty(answered, true);
    if (auto* const box = qobject_cast<QMessageBox*>(dialog))
        return answer(*box);
    if (auto* const question = qobject_cast<QInputDialog*>(dialog))
        question->setTextValue(QString::fromStdString(entered));
    else if (auto* const name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")))
        name->setText(QString::fromStdString(chosen_file));
    // It may show a box of its own, which this timer must answer.
    QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
}

ScriptedUser::ScriptedUser(program::Program& program, BoxUser& boxes, const WindowPlaces& places,
                           std::mt19937_64& random, std::string prefix)
    : program_(program), boxes_(boxes), places_(places), random_(random), prefix_(std::move(prefix))
{
}

std::vector<store::QaTexts> ScriptedUser::new_texts(std::size_t count)
{
    std::vector<store::QaTexts> texts;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string number = prefix_ + "-" + std::to_string(++texts_);
        texts.push_back({"Frage " + number, "r\u00e9ponse " + number});
    }
    return texts;
}

WindowStep ScriptedUser::choose()
{
    using enum Act;
    if (has_draft_)
        return {.act = random_() % 2 == 0 ? save_draft : leave_draft, .texts = {draft_}};
    static constexpr std::array<Act, 28> acts{
        know,         know,         know_not, answer, answer,    undo,   next,   insert, insert, insert,
        insert,       edit,         edit,     edit,   remove,    remove, remove, leave,  leave,  import_texts,
        export_texts, export_texts, option,   option, reset_all, insert, edit,   remove};
    constexpr std::uint64_t acts_to_a_draft = 40;
    constexpr std::uint64_t acts_to_a_rest = 60;
    constexpr std::uint64_t acts_to_a_close = 25;
    constexpr std::size_t most_records = 30;
    const std::uint64_t choice = random_();
    if (choice % acts_to_a_draft == 0)
        return {.act = draft, .texts = new_texts(1)};
    if (choice % acts_to_a_rest == 1)
        return {.act = rest};
    if (choice % acts_to_a_close == 2)
        return {.act = close};
    Act act = acts[(choice >> 20U) % acts.size()];
    const bool full = rows_of(program_.course().database()).size() > most_records;
    if (full && (act == insert || act == import_texts))
        act = remove;
    switch (act) {
    case insert:
    case leave:
        return {.act = act, .texts = new_texts(1)};
    case import_texts:
        return {.act = act, .texts = new_texts(2 + random_() % 8)};
    case know:
    case know_not:
    case answer:
    case edit:
    case remove:
        return with_question(act);
    default:
        return {.act = act};
    }
}

/// Without a question on display, the next one is asked first; where none is due, a record is inserted, which is on
/// display afterwards.
WindowStep ScriptedUser::with_question(Act act)
{
    const drill::ShownRecord& shown = program_.shown();
    if (!shown.is_question() && random_() % 2 == 0)
        return {.act = Act::next};
    if (!shown.is_question())
        return {.act = Act::insert, .texts = new_texts(1)};
    if (act == Act::answer && !is_usable("pb_5"))
        act = Act::know;
    WindowStep step{.act = act, .record = shown.current_cnt()};
    if (act == Act::edit)
        step.texts = new_texts(1);
    return step;
}

void ScriptedUser::perform(const WindowStep& step)
{
    switch (step.act) {
    case Act::open:
    case Act::close:
        return;
    case Act::next:
        return choose_entry("m_display_next_question");
    case Act::know:
        return choose_entry("m_set_success");
    case Act::know_not:
        return choose_entry("m_set_failure");
    case Act::answer:
        press("pb_5");
        type(random_() % 2 == 0 ? program_.shown().loaded_answer() : "no idea");
        return press_key(Qt::Key_Return, QStringLiteral("\r"));
    case Act::undo:
        return choose_entry("m_undo");
    case Act::insert:
        press("pb_9");
        type_record(step.texts.at(0));
        return save();
    case Act::edit:
        press("pb_8");
        type_record(step.texts.at(0));
        return save();
    case Act::remove:
        return choose_entry("m_delete");
    case Act::leave:
        press("pb_9");
        type_record(step.texts.at(0));
        return leave_with_escape();
    case Act::draft:
        press("pb_9");
        type_record(step.texts.at(0));
        draft_ = step.texts.at(0);
        has_draft_ = true;
        return wait_for_draft(draft_);
    case Act::save_draft:
        has_draft_ = false;
        return save();
    case Act::leave_draft:
        has_draft_ = false;
        return leave_with_escape();
    case Act::reset_all:
        return choose_entry("m_reset_all");
    case Act::import_texts:
        write_import(step);
        boxes_.chosen_file = places_.import;
        return choose_entry("m_import");
    case Act::export_texts:
        boxes_.chosen_file = places_.exported;
        return choose_entry("m_export");
    case Act::option:
        return change_option(random_());
    case Act::rest:
        return rest();
    }
}

bool ScriptedUser::is_usable(const char* name) const
{
    const auto* const button = program_.form1().widget().findChild<QAbstractButton*>(QString::fromLatin1(name));
    return button != nullptr && button->isVisible() && button->isEnabled();
}

void ScriptedUser::press(const char* name)
{
    if (!is_usable(name))
        throw std::runtime_error(std::string(name) + " cannot be pressed");
    program_.form1().widget().findChild<QAbstractButton*>(QString::fromLatin1(name))->click();
}

void ScriptedUser::choose_entry(const char* name)
{
    auto* const entry = program_.form1().widget().findChild<QAction*>(QString::fromLatin1(name));
    if (entry == nullptr)
        throw std::runtime_error(std::string("there is no entry ") + name);
    // Such as "undo" in a course without records.
    if (!entry->isEnabled())
        return;
    entry->trigger();
    QCoreApplication::processEvents();
}

void ScriptedUser::press_key(int key, const QString& text)
{
    constexpr quint64 between_keys = 1000;
    moment_ += between_keys;
    QMainWindow& window = program_.form1().widget();
    for (const QEvent::Type kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QWidget* const focus = window.focusWidget();
        QKeyEvent event(kind, key, Qt::NoModifier, text);
        event.setTimestamp(moment_);
        QCoreApplication::sendEvent(focus != nullptr ? focus : &window, &event);
    }
}

void ScriptedUser::type(const std::string& text)
{
    for (const QChar character : QString::fromStdString(text))
        press_key(0, character);
}

/// Into the editor, in place of what is in its boxes.
void ScriptedUser::type_record(const store::QaTexts& by_column)
{
    platform::Form1& form1 = program_.form1().controls();
    const bool turned = program_.course().params.invert;
    form1.Text_q.clear();
    form1.Text_q.set_focus();
    type(turned ? by_column.a : by_column.q);
    form1.Text_a.clear();
    form1.Text_a.set_focus();
    type(turned ? by_column.q : by_column.a);
}

void ScriptedUser::save()
{
    press("pb_10");
    if (editing())
        throw std::runtime_error("a record was not saved");
}

void ScriptedUser::leave_with_escape()
{
    press_key(Qt::Key_Escape, {});
    // A press that comes too soon after another one does not count.
    for (int attempts = 0; editing(); ++attempts) {
        constexpr int most_attempts = 20;
        if (attempts == most_attempts)
            throw std::runtime_error("Escape does not leave the editor");
        process_events_for(after_a_key);
        press_key(Qt::Key_Escape, {});
    }
}

void ScriptedUser::wait_until(const char* what, const std::function<bool()>& holds)
{
    const auto end = std::chrono::steady_clock::now() + longest_wait;
    while (!holds()) {
        if (std::chrono::steady_clock::now() > end)
            throw std::runtime_error(std::string(what) + " does not come");
        process_events_for(between_looks);
    }
}

void ScriptedUser::wait_for_draft(const store::QaTexts& texts)
{
    wait_until("the draft", [&] {
        std::error_code error;
        for (const auto& entry : fs::directory_iterator(places_.data, error)) {
            const std::string name = entry.path().filename().string();
            if (!name.starts_with("draft-") || !name.ends_with(".txt"))
                continue;
            const std::string bytes = contents(entry.path());
            if (bytes.find(texts.q) != std::string::npos && bytes.find(texts.a) != std::string::npos)
                return true;
        }
        return false;
    });
}

/// Until there is a copy of the last day, if one is to be made.
void ScriptedUser::rest()
{
    if (program_.course().record_count == 0)
        return;
    wait_until("the copy", [&] {
        constexpr std::int64_t day = 24 * 60 * 60;
        const common::DateTime now = platform::system::SystemClock().now();
        std::error_code error;
        for (const auto& entry : fs::recursive_directory_iterator(places_.data + "/copies", error)) {
            const auto time = keep::time_of_copy(entry.path().filename().string());
            if (time && common::seconds_between(*time, now) < day)
                return true;
        }
        return false;
    });
}

void ScriptedUser::change_option(std::uint64_t number)
{
    static constexpr std::array<const char*, 6> entries{"m_always_let_me_type",  "m_list_mode",
                                                        "m_random_extraction",   "m_invert",
                                                        "m_change_target_level", "m_change_course_title"};
    const std::size_t option = number % entries.size();
    constexpr std::size_t target_level = 4;
    boxes_.entered =
        option == target_level ? std::to_string(1 + (number >> 8U) % 9) : "Course " + std::to_string(number);
    choose_entry(entries.at(option));
}

void ScriptedUser::write_import(const WindowStep& step)
{
    std::ofstream stream(places_.import, std::ios::binary | std::ios::trunc);
    for (const store::QaTexts& texts : step.texts) {
        const bool turned = program_.course().params.invert;
        stream << "@Q@ " << (turned ? texts.a : texts.q) << "\n@A@ " << (turned ? texts.q : texts.a) << '\n';
    }
}

} // namespace cuedrill::torture
