#include "torture/window_report.h"

#include "common/errors.h"

#include <QSettings>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <variant>

namespace cuedrill::torture {
namespace {

constexpr std::array<const char*, number_of_acts> act_names{
    "open",         "next",         "know",   "know_not", "answer",     "undo",        "insert",
    "edit",         "remove",       "leave",  "draft",    "save_draft", "leave_draft", "reset_all",
    "import_texts", "export_texts", "option", "rest",     "close"};

std::string text_of(const platform::Value& value)
{
    std::ostringstream out;
    if (const auto* const whole = std::get_if<std::int64_t>(&value))
        out << *whole;
    else if (const auto* const number = std::get_if<double>(&value))
        out << std::hexfloat << *number;
    else if (const auto* const text = std::get_if<std::string>(&value))
        out << *text;
    else
        out << "null";
    return out.str();
}

/// One line; a field may hold any character.
std::string line_of(const std::vector<std::string>& fields)
{
    std::string line;
    for (const std::string& field : fields) {
        if (!line.empty())
            line += '\t';
        for (const char character : field) {
            if (character == '\\')
                line += "\\\\";
            else if (character == '\t')
                line += "\\t";
            else if (character == '\n')
                line += "\\n";
            else
                line += character;
        }
    }
    return line + "\n";
}

std::vector<std::string> fields_of(std::string_view line)
{
    std::vector<std::string> fields(1);
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\t') {
            fields.emplace_back();
        } else if (line[i] == '\\' && i + 1 < line.size()) {
            const char code = line[++i];
            fields.back() += code == 't' ? '\t' : code == 'n' ? '\n' : code;
        } else {
            fields.back() += line[i];
        }
    }
    return fields;
}

Act act_of(const std::string& name)
{
    for (std::size_t i = 0; i < act_names.size(); ++i) {
        if (name == act_names[i])
            return static_cast<Act>(i);
    }
    throw std::runtime_error("an unknown act: " + name);
}

} // namespace

const char* name_of(Act act)
{
    return act_names[static_cast<std::size_t>(act)];
}

WindowRows rows_of(platform::Database& course)
{
    WindowRows rows;
    for (const platform::Row& row : course.query("Select cnt, q, a, q_attempts, a_attempts, q_fails, a_fails, "
                                                 "q_successes, a_successes, q_date_last_test, a_date_last_test, "
                                                 "q_date_last_show, a_date_last_show from qa order by cnt")) {
        constexpr std::size_t first_of_history = 3;
        constexpr std::size_t first_of_shown = 11;
        const auto& values = row.values();
        WindowRow& found = rows[std::get<std::int64_t>(values[0])];
        found.texts = {text_of(values[1]), text_of(values[2])};
        for (std::size_t i = first_of_history; i < values.size(); ++i)
            (i < first_of_shown ? found.history : found.shown) += text_of(values[i]) + " ";
    }
    return rows;
}

NamedValues params_of(platform::Database& course)
{
    NamedValues params;
    for (const platform::Row& row :
         course.query("Select param, string_value, number_value, date_value from params order by param")) {
        const auto& values = row.values();
        params[text_of(values[0])] = text_of(values[1]) + " " + text_of(values[2]) + " " + text_of(values[3]);
    }
    return params;
}

NamedValues settings_of(const std::string& path, const std::string& name)
{
    const QSettings settings(QString::fromStdString(path), QSettings::IniFormat);
    NamedValues values;
    for (const QString& key : settings.allKeys())
        values[name + " " + key.toStdString()] = settings.value(key).toString().toStdString();
    if (settings.status() != QSettings::NoError)
        throw common::Error(path + " cannot be read");
    return values;
}

std::size_t number_of(const std::string& bytes)
{
    return std::hash<std::string>()(bytes) | 1U;
}

std::string lines_of(const WindowStep& step)
{
    std::vector<std::string> fields{"begin", name_of(step.act), std::to_string(step.record)};
    for (const store::QaTexts& texts : step.texts) {
        fields.push_back(texts.q);
        fields.push_back(texts.a);
    }
    return line_of(fields);
}

std::string lines_of(const WindowState& state)
{
    std::string lines;
    for (const auto& [number, row] : state.rows)
        lines += line_of({"record", std::to_string(number), row.texts.q, row.texts.a, row.history, row.shown});
    for (const auto& [name, value] : state.params)
        lines += line_of({"param", name, value});
    for (const auto& [name, value] : state.settings)
        lines += line_of({"setting", name, value});
    return lines + line_of({"end", std::to_string(state.exported)});
}

bool WindowReport::take_line(std::string_view line)
{
    const std::vector<std::string> fields = fields_of(line);
    const std::string& kind = fields.front();
    if (kind == "begin") {
        step_ = {.act = act_of(fields.at(1)), .record = std::strtoll(fields.at(2).c_str(), nullptr, 10)};
        for (std::size_t i = 3; i + 1 < fields.size(); i += 2)
            step_.texts.push_back({fields[i], fields[i + 1]});
        under_way_ = true;
    } else if (kind == "record") {
        arriving_.rows[std::strtoll(fields.at(1).c_str(), nullptr, 10)] = {
            .texts = {fields.at(2), fields.at(3)}, .history = fields.at(4), .shown = fields.at(5)};
    } else if (kind == "param") {
        arriving_.params[fields.at(1)] = fields.at(2);
    } else if (kind == "setting") {
        arriving_.settings[fields.at(1)] = fields.at(2);
    } else if (kind == "end") {
        state_ = std::exchange(arriving_, {});
        state_.exported = std::strtoull(fields.at(1).c_str(), nullptr, 10);
        under_way_ = false;
        return true;
    } else {
        throw std::runtime_error("an unknown line: " + std::string(line));
    }
    return false;
}

std::vector<std::string> take_lines(std::string& output)
{
    std::vector<std::string> lines;
    for (std::size_t end = output.find('\n'); end != std::string::npos; end = output.find('\n')) {
        lines.push_back(output.substr(0, end));
        output.erase(0, end + 1);
    }
    return lines;
}

} // namespace cuedrill::torture
