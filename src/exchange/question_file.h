#pragma once

#include "exchange/question_text.h"
#include "exchange/record_source.h"
#include "exchange/text_decoding.h"
#include "platform/files.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>

namespace cuedrill::exchange {

/// Reads the records of a question text file step by step. However long the file, its lines and its texts are, each
/// step is short and only a piece of the file is in memory.
///
/// The file is read twice, because its encoding and line ends are known only at the end. If it changes in between,
/// bytes that do not fit the encoding count as unreadable.
class QuestionFile : public RecordSource {
public:
    explicit QuestionFile(std::unique_ptr<platform::FileReading> file);

    /// @throws common::Error when the file cannot be read, is too long, or is encoded as UTF-16.
    [[nodiscard]] Step step() override;

    [[nodiscard]] const ReadRecord& record() const override { return record_; }

    /// Whether any "@Q@" was found so far.
    [[nodiscard]] bool has_question() const override { return reader_.has_question(); }

    [[nodiscard]] std::optional<int> percent() const override;
    [[nodiscard]] std::string nothing_found() const override;
    /// Comments and what stands before the first question are not told: the file is written that way.
    [[nodiscard]] std::string left_out() const override { return {}; }

private:
    void survey();
    void read();
    void read_lines(std::string text);

    std::unique_ptr<platform::FileReading> file_;
    TextSurvey survey_;
    std::optional<TextDecoder> decoder_; ///< set when the survey is done
    std::optional<LineSplitter> lines_;
    QuestionTextReader reader_;
    QuestionTextReader::Sink sink_;
    std::deque<ReadRecord> found_; ///< records of the piece read last
    ReadRecord record_;
    std::uint64_t read_ = 0; ///< bytes read for records
    bool at_end_ = false;
};

} // namespace cuedrill::exchange
