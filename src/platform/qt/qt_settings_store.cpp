#include "platform/qt/qt_settings_store.h"

#include "common/errors.h"
#include "platform/qt/qt_text.h"

#include <QDir>
#include <QLockFile>
#include <QSettings>
#include <filesystem>
#include <system_error>

namespace cuedrill::platform::qt {

namespace {

QString to_key(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// How long to wait, in milliseconds, for another program that is writing settings.
constexpr int longest_wait = 1000;

/// Throws if the name belongs to something other than a regular file: opening a pipe would block forever.
void require_file(const std::string& path)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        throw common::Error(path + ": not an ordinary file");
}

/// Throws if another program holds the lock of the settings too long. QSettings, which takes the lock next, would wait
/// for it forever.
void require_free_lock(const std::string& path)
{
    const std::string name = path + ".lock";
    require_file(name);
    QLockFile lock(to_key(name));
    if (!lock.tryLock(longest_wait) && lock.error() == QLockFile::LockFailedError)
        throw common::Error(name + ": another program holds it");
}

/// Throws if the last access failed; `failure` says what could not be done.
void check(const QSettings& settings, const std::string& path, const char* failure)
{
    switch (settings.status()) {
    case QSettings::NoError:
        return;
    case QSettings::AccessError:
        throw common::Error(path + ": " + failure);
    case QSettings::FormatError:
        throw common::Error(path + ": not a file of settings");
    }
}

/// Throws if the file exists but cannot be read or does not contain settings.
void check_readable(const QSettings& settings, const std::string& path)
{
    // The sections are parsed on demand; reading all keys makes an error show now.
    static_cast<void>(settings.allKeys());
    check(settings, path, "cannot be read");
}

} // namespace

std::string QtSettingsStore::default_folder()
{
    const QString folder = qEnvironmentVariable("XDG_CONFIG_HOME");
    return from_qt(QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + QStringLiteral("/.config"));
}

std::optional<std::string> QtSettingsStore::get(std::string_view application, std::string_view section,
                                                std::string_view key) const
{
    const std::string file = path(application, section);
    require_file(file);
    const QSettings settings(to_key(file), QSettings::IniFormat);
    check_readable(settings, file);
    const QVariant value = settings.value(to_key(key));
    if (!value.isValid())
        return std::nullopt;
    // QSettings returns an unquoted text with commas, as a user may have typed it into the file, as a list.
    return from_qt(value.toStringList().join(QStringLiteral(", ")));
}

void QtSettingsStore::set(std::string_view application, std::string_view section, std::string_view key,
                          std::string_view value)
{
    const std::string file = path(application, section);
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::path(file).parent_path();
    std::filesystem::create_directories(folder, error);
    if (error)
        throw common::Error(folder.string() + ": " + error.message());

    require_file(file);
    require_free_lock(file);
    QSettings settings(to_key(file), QSettings::IniFormat);
    check_readable(settings, file);
    settings.setValue(to_key(key), to_key(value));
    settings.sync();
    check(settings, file, "cannot be written");
}

std::string QtSettingsStore::path(std::string_view application, std::string_view section) const
{
    std::string result = folder_;
    result.append("/").append(application).append("/").append(section).append(".ini");
    return result;
}

} // namespace cuedrill::platform::qt
