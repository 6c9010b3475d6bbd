#pragma once

#include "exchange/question_text.h"
#include "exchange/text_decoding.h"
#include "platform/files.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>

namespace cuedrill::exchange {

/// Reads the records of a question text file step by step. No step takes long and no more than a piece of the file is
/// held, however long the file, its lines and its texts are.
///
/// The file is read twice: its encoding and its line ends are known only at its end. Where it changes meanwhile, bytes
/// that do not fit the encoding count as unreadable.
class QuestionFile {
public:
    enum class Step {
        reading, ///< a piece was read
        record,  ///< `record` gives the next one
        end      ///< there is nothing more
    };

    explicit QuestionFile(std::unique_ptr<platform::FileReading> file);
    QuestionFile(const QuestionFile&) = delete;
    QuestionFile& operator=(const QuestionFile&) = delete;

    /// Goes on.
    /// @throws common::Error when the file cannot be read, is too long, or is encoded as UTF-16.
    [[nodiscard]] Step step();

    /// The record that the last step has found.
    [[nodiscard]] const ReadRecord& record() const { return record_; }

    /// Whether any "@Q@" was found until now.
    [[nodiscard]] bool has_question() const { return reader_.has_question(); }

    /// How much of the file has been read for its records, in percent; nothing for a file that takes no time.
    [[nodiscard]] std::optional<int> percent() const;

private:
    void survey();
    void read();
    void read_lines(std::string text);

    std::unique_ptr<platform::FileReading> file_;
    TextSurvey survey_;
    std::optional<TextDecoder> decoder_; ///< once the survey is done
    std::optional<LineSplitter> lines_;
    QuestionTextReader reader_;
    QuestionTextReader::Sink sink_;
    std::deque<ReadRecord> found_; ///< in the piece that was read last
    ReadRecord record_;
    std::uint64_t read_ = 0; ///< bytes read for their records
    bool at_end_ = false;
};

} // namespace cuedrill::exchange
