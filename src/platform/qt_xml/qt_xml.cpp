#include "platform/qt_xml/qt_xml.h"

#include "common/errors.h"
#include "common/text.h"

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>
#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace cuedrill::platform::qt_xml {
namespace {

/// Bytes that are read at once.
constexpr std::size_t piece_size = 16384;
/// About the most bytes of a single token. Qt compares all attributes of an element with each other, and collects the
/// whole of a text.
constexpr std::size_t longest_token = 65536;
/// The most elements within each other.
constexpr int deepest = 100;

std::string utf8(QStringView text)
{
    const QByteArray bytes = text.toUtf8();
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

class QtXmlReading : public XmlReading {
public:
    explicit QtXmlReading(std::unique_ptr<FileReading> file) : file_(std::move(file))
    {
        reader_.setNamespaceProcessing(false);
    }

    [[nodiscard]] Token next() override
    {
        std::size_t read_for_token = 0;
        for (;;) {
            const QXmlStreamReader::TokenType type = reader_.readNext();
            if (type == QXmlStreamReader::Invalid) {
                if (reader_.error() != QXmlStreamReader::PrematureEndOfDocumentError)
                    fail(utf8(reader_.errorString()));
                if (at_end_ && !is_ill_formed_)
                    fail("its end is missing");
                if (read_for_token >= longest_token)
                    fail("an element or a text is too long");
                read_for_token += read();
                continue;
            }
            read_for_token = 0;
            if (const std::optional<Token> token = token_of(type))
                return *token;
        }
    }

    [[nodiscard]] const std::string& name() const override { return name_; }
    [[nodiscard]] const std::string& text() const override { return text_; }
    [[nodiscard]] std::int64_t line() const override { return reader_.lineNumber(); }
    [[nodiscard]] std::uint64_t bytes_read() const override { return bytes_read_; }

    [[nodiscard]] std::optional<std::string> attribute(std::string_view name) const override
    {
        const QString wanted = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
        if (!reader_.attributes().hasAttribute(wanted))
            return std::nullopt;
        return utf8(reader_.attributes().value(wanted));
    }

private:
    [[noreturn]] void fail(std::string reason) const
    {
        if (!reason.ends_with('.'))
            reason += '.';
        throw common::Error("The file is damaged at line " + std::to_string(line()) + ": " + reason);
    }

    /// Reads the next bytes of the file and gives them to Qt.
    ///
    /// Qt decodes a piece as a whole, and refuses all of it because of a single wrong byte. So that what stands before
    /// that byte is read, Qt gets only well-formed UTF-8.
    std::size_t read()
    {
        if (is_ill_formed_)
            fail("it has bytes that are no characters in UTF-8");
        std::string bytes = std::exchange(held_, {});
        const std::size_t held = bytes.size();
        while (!at_end_ && bytes.size() < piece_size) {
            const std::string more = file_->read(piece_size - bytes.size());
            at_end_ = more.empty();
            bytes += more;
        }
        const std::size_t count = bytes.size() - held;
        if (std::exchange(is_first_piece_, false))
            look_for_encoding(bytes);
        bytes_read_ += count;
        if (is_utf8_)
            hold_back(bytes);
        reader_.addData(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
        return count;
    }

    void look_for_encoding(std::string_view bytes)
    {
        constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";
        constexpr std::string_view key = "encoding";
        if (bytes.starts_with(utf8_mark))
            bytes.remove_prefix(utf8_mark.size());
        // UTF-16 and UTF-32, with or without a mark.
        if (bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE") ||
            bytes.substr(0, 4).find('\0') != std::string_view::npos)
            fail("its encoding is not supported");
        const std::string_view declaration = bytes.substr(0, bytes.find("?>"));
        const std::size_t place = declaration.find(key);
        if (!declaration.starts_with("<?xml") || place == std::string_view::npos)
            return;
        std::string_view rest = declaration.substr(place + key.size());
        rest.remove_prefix(std::min(rest.find_first_of("\"'"), rest.size()));
        const std::string_view name = rest.substr(0, rest.find(rest.substr(0, 1), 1)).substr(rest.empty() ? 0 : 1);
        is_utf8_ = common::equal_ascii(name, "UTF-8");
        if (!is_utf8_ && !common::equal_ascii(name, "ISO-8859-1"))
            fail("its encoding is not supported");
    }

    /// Keeps back an incomplete character at the end, and everything from the first wrong byte on.
    void hold_back(std::string& bytes)
    {
        constexpr std::size_t longest_rest = 3;
        if (common::is_utf8(bytes))
            return;
        std::string_view text = bytes;
        if (!at_end_) {
            for (std::size_t rest = 1; rest <= longest_rest; ++rest) {
                if (rest <= text.size() && common::is_utf8(text.substr(0, text.size() - rest))) {
                    held_ = text.substr(text.size() - rest);
                    bytes.resize(bytes.size() - rest);
                    return;
                }
            }
        }
        while (!text.empty() && common::is_utf8(common::first_code_points(text, 1)))
            text.remove_prefix(common::first_code_points(text, 1).size());
        bytes.resize(bytes.size() - text.size());
        is_ill_formed_ = true;
    }

    /// std::nullopt for a token to be skipped.
    [[nodiscard]] std::optional<Token> token_of(QXmlStreamReader::TokenType type)
    {
        switch (type) {
        case QXmlStreamReader::DTD:
            // A few definitions that refer to each other can stand for gigabytes of text.
            if (reader_.text().contains(u'['))
                fail("it defines entities or elements of its own, which is not supported");
            return std::nullopt;
        case QXmlStreamReader::EntityReference:
            fail("the entity \"" + utf8(reader_.name()) + "\" is not known");
        case QXmlStreamReader::StartElement:
            if (++depth_ > deepest)
                fail("too many elements are within each other");
            name_ = utf8(reader_.qualifiedName());
            return Token::start;
        case QXmlStreamReader::Characters:
            text_ = utf8(reader_.text());
            return Token::text;
        case QXmlStreamReader::EndElement:
            --depth_;
            name_ = utf8(reader_.qualifiedName());
            return Token::end;
        case QXmlStreamReader::EndDocument:
            return Token::finish;
        default:
            return std::nullopt;
        }
    }

    std::unique_ptr<FileReading> file_;
    QXmlStreamReader reader_;
    std::string name_;
    std::string text_;
    std::uint64_t bytes_read_ = 0;
    int depth_ = 0;
    std::string held_; ///< the beginning of a character
    bool is_first_piece_ = true;
    bool is_utf8_ = true;
    bool is_ill_formed_ = false; ///< the next byte, which Qt does not get, is wrong
    bool at_end_ = false;
};

} // namespace

std::unique_ptr<XmlReading> QtXml::begin(std::unique_ptr<FileReading> file) const
{
    return std::make_unique<QtXmlReading>(std::move(file));
}

} // namespace cuedrill::platform::qt_xml
