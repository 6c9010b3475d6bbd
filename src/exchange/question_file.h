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
    [[nodiscard]] const ReadRecord& record() const { return m_record; }

    /// Whether any "@Q@" was found until now.
    [[nodiscard]] bool has_question() const { return m_reader.has_question(); }

    /// How much of the file has been read for its records, in percent; nothing for a file that takes no time.
    [[nodiscard]] std::optional<int> percent() const;

private:
    void survey();
    void read();
    void read_lines(std::string text);

    std::unique_ptr<platform::FileReading> m_file;
    TextSurvey m_survey;
    std::optional<TextDecoder> m_decoder; ///< once the survey is done
    std::optional<LineSplitter> m_lines;
    QuestionTextReader m_reader;
    QuestionTextReader::Sink m_sink;
    std::deque<ReadRecord> m_found; ///< in the piece that was read last
    ReadRecord m_record;
    std::uint64_t m_read = 0; ///< bytes read for their records
    bool m_at_end = false;
};

} // namespace cuedrill::exchange
