#include "exchange/question_file.h"

#include <algorithm>
#include <utility>

namespace cuedrill::exchange {
namespace {

/// Bytes per step of the survey, which takes far less time than a user notices.
constexpr std::size_t surveyed_piece = 262144;
/// Bytes per step of reading records. A record may take as little as eight bytes, and all records of a piece are held
/// in memory.
constexpr std::size_t read_piece = 16384;

/// Shorter files are read so quickly that they need no progress display.
constexpr std::uint64_t long_file = 1024ULL * 1024;

} // namespace

QuestionFile::QuestionFile(std::unique_ptr<platform::FileReading> file)
    : file_(std::move(file)), sink_([this](ReadRecord record) { found_.push_back(std::move(record)); })
{
}

QuestionFile::Step QuestionFile::step()
{
    if (found_.empty()) {
        if (at_end_)
            return Step::end;
        if (decoder_)
            read();
        else
            survey();
        return Step::reading;
    }
    record_ = std::move(found_.front());
    found_.pop_front();
    return Step::record;
}

void QuestionFile::survey()
{
    std::string bytes = file_->read(surveyed_piece);
    if (!bytes.empty()) {
        survey_.add(std::move(bytes));
        return;
    }
    const TextFormat format = survey_.format();
    decoder_.emplace(format);
    lines_.emplace(format.line_end);
    file_->rewind();
}

void QuestionFile::read()
{
    std::string bytes = file_->read(read_piece);
    read_ += bytes.size();
    if (!bytes.empty()) {
        read_lines(decoder_->decode(std::move(bytes)));
        return;
    }
    read_lines(decoder_->finish());
    lines_->finish([this](std::string_view text) { reader_.add(text, sink_); });
    reader_.finish(sink_);
    at_end_ = true;
}

void QuestionFile::read_lines(std::string text)
{
    lines_->add(
        std::move(text), [this](std::string_view part) { reader_.add(part, sink_); },
        [this] { reader_.end_line(sink_); });
}

std::optional<int> QuestionFile::percent() const
{
    constexpr std::uint64_t whole = 100;
    if (file_->size() < long_file)
        return std::nullopt;
    return static_cast<int>(std::min(read_ * whole / file_->size(), whole));
}

std::string QuestionFile::nothing_found() const
{
    return "No \"@Q@\" was found in the file. Each question must be preceded by \"@Q@\", and its answer by \"@A@\".\r\n"
           "Example: @Q@ What is the capital of Alabama?  @A@ Montgomery\r\n";
}

} // namespace cuedrill::exchange
