#include "platform/qt/qt_shell.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <memory>
#include <span>
#include <unistd.h>

namespace cuedrill::platform::qt {

namespace {

/// A program and its arguments before the target.
struct Command {
    const char* program;
    const char* option = nullptr;
};

using Commands = std::span<const Command>;

/// Desktop openers; they know the user's preferred program for each kind of file.
constexpr Command openers[] = {{"xdg-open"}, {"gio", "open"}};

/// For the address of a file: outside of the desktops that it knows, xdg-open leaves out the anchor in it.
constexpr Command openers_of_addresses[] = {{"gio", "open"}, {"xdg-open"}};

constexpr Command file_managers[] = {{"nautilus"}, {"dolphin"}, {"thunar"},    {"nemo"},
                                     {"caja"},     {"pcmanfm"}, {"pcmanfm-qt"}};

constexpr Command text_editors[] = {{"gnome-text-editor"}, {"gedit"}, {"kate"},  {"kwrite"},
                                    {"mousepad"},          {"xed"},   {"pluma"}, {"featherpad"},
                                    {"leafpad"},           {"geany"}, {"emacs"}};

/// The target in a form that the programs do not take for an option, and an address in a form that they recognise.
QString as_argument(const std::string& target)
{
    QString argument = QFile::decodeName(target.c_str());
    if (argument.startsWith(QLatin1String("www."), Qt::CaseInsensitive))
        argument.prepend(QLatin1String("http://"));
    else if (argument.startsWith(QLatin1Char('-')))
        argument.prepend(QLatin1String("./"));
    return argument;
}

/// Starts programs with one target in one folder.
class Starter {
public:
    Starter(const std::string& target, const std::string& working_folder, const std::vector<std::string>& search_path,
            std::chrono::milliseconds patience)
        : target_(as_argument(target)), working_folder_(QFile::decodeName(working_folder.c_str())), patience_(patience)
    {
        for (const std::string& folder : search_path)
            search_path_.append(QFile::decodeName(folder.c_str()));
    }

    /// Starts the first opener that succeeds with the target, or else the first of `programs` that can be started.
    /// @return its process id; std::nullopt if none could be started.
    [[nodiscard]] std::optional<std::int64_t> start_opener_or(Commands programs) const
    {
        const bool is_address = target_.startsWith(QLatin1String("file://"));
        for (const Command& opener : is_address ? Commands(openers_of_addresses) : Commands(openers)) {
            if (const std::optional<std::int64_t> process = start(opener, patience_))
                return process;
        }
        for (const Command& program : programs) {
            if (const std::optional<std::int64_t> process = start(program, std::chrono::milliseconds(0)))
                return process;
        }
        return std::nullopt;
    }

private:
    /// @param patience how long to wait for the program to fail. After that it is left running.
    [[nodiscard]] std::optional<std::int64_t> start(const Command& command, std::chrono::milliseconds patience) const
    {
        const QString file = QStandardPaths::findExecutable(QString::fromLatin1(command.program), search_path_);
        if (file.isEmpty())
            return std::nullopt;
        QStringList arguments{target_};
        if (command.option != nullptr)
            arguments.prepend(QString::fromLatin1(command.option));
        auto process = std::make_unique<QProcess>();
        process->setWorkingDirectory(working_folder_);
        process->setStandardInputFile(QProcess::nullDevice());
        process->setStandardOutputFile(QProcess::nullDevice());
        process->setStandardErrorFile(QProcess::nullDevice());
        // A session of its own, so that Ctrl+C or a hang-up at this process's terminal does not end the program.
        process->setChildProcessModifier([] { ::setsid(); });
        process->start(file, arguments);
        if (!process->waitForStarted())
            return std::nullopt;
        const std::int64_t number = process->processId();
        if (patience.count() > 0 && process->waitForFinished(static_cast<int>(patience.count())) &&
            (process->exitStatus() != QProcess::NormalExit || process->exitCode() != 0))
            return std::nullopt;
        leave_alone(std::move(process));
        return number;
    }

    /// A QProcess kills its process on destruction, so the object lives until the process ends.
    static void leave_alone(std::unique_ptr<QProcess> process)
    {
        if (process->state() == QProcess::NotRunning)
            return;
        QProcess* const left = process.release();
        QObject::connect(left, &QProcess::finished, left, &QObject::deleteLater);
    }

    QString target_;
    QString working_folder_;
    std::chrono::milliseconds patience_;
    QStringList search_path_;
};

} // namespace

bool QtShell::open(const std::string& target, const std::string& working_folder)
{
    return Starter(target, working_folder, search_path_, patience_).start_opener_or({}).has_value();
}

bool QtShell::open_folder(const std::string& path)
{
    return Starter(path, {}, search_path_, patience_).start_opener_or(file_managers).has_value();
}

std::optional<std::int64_t> QtShell::edit_text(const std::string& path)
{
    return Starter(path, {}, search_path_, patience_).start_opener_or(text_editors);
}

} // namespace cuedrill::platform::qt
