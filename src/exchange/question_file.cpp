#include "exchange/question_file.h"

#include <algorithm>
#include <utility>

namespace cuedrill::exchange {
namespace {

/// A piece to be looked through takes far less time than anybody notices.
constexpr std::size_t surveyed_piece = 262144;
/// A piece may hold a record in eight bytes, and all of them wait in memory.
constexpr std::size_t read_piece = 16384;

/// Less is read in an instant.
constexpr std::uint64_t long_file = 1024ULL * 1024;

} // namespace

QuestionFile::QuestionFile(std::unique_ptr<platform::FileReading> file)
    : m_file(std::move(file)), m_sink([this](ReadRecord record) { m_found.push_back(std::move(record)); })
{
}

QuestionFile::Step QuestionFile::step()
{
    if (m_found.empty()) {
        if (m_at_end)
            return Step::end;
        if (m_decoder)
            read();
        else
            survey();
        return Step::reading;
    }
    m_record = std::move(m_found.front());
    m_found.pop_front();
    return Step::record;
}

void QuestionFile::survey()
{
    std::string bytes = m_file->read(surveyed_piece);
    if (!bytes.empty()) {
        m_survey.add(std::move(bytes));
        return;
    }
    const TextFormat format = m_survey.format();
    m_decoder.emplace(format);
    m_lines.emplace(format.line_end);
    m_file->rewind();
}

void QuestionFile::read()
{
    std::string bytes = m_file->read(read_piece);
    m_read += bytes.size();
    if (!bytes.empty()) {
        read_lines(m_decoder->decode(std::move(bytes)));
        return;
    }
    read_lines(m_decoder->finish());
    m_lines->finish([this](std::string_view text) { m_reader.add(text, m_sink); });
    m_reader.finish(m_sink);
    m_at_end = true;
}

void QuestionFile::read_lines(std::string text)
{
    m_lines->add(
        std::move(text), [this](std::string_view part) { m_reader.add(part, m_sink); },
        [this] { m_reader.end_line(m_sink); });
}

std::optional<int> QuestionFile::percent() const
{
    constexpr std::uint64_t whole = 100;
    if (m_file->size() < long_file)
        return std::nullopt;
    return static_cast<int>(std::min(m_read * whole / m_file->size(), whole));
}

} // namespace cuedrill::exchange
