#include "platform/qt_xml/qt_xml.h"

#include "common/errors.h"

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>
#include <string>
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
                if (reader_.error() != QXmlStreamReader::PrematureEndOfDocumentError || at_end_)
                    fail(at_end_ ? std::string("its end is missing") : utf8(reader_.errorString()));
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

    std::size_t read()
    {
        const std::string bytes = file_->read(piece_size);
        at_end_ = bytes.empty();
        bytes_read_ += bytes.size();
        reader_.addData(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
        return bytes.size();
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
    bool at_end_ = false;
};

} // namespace

std::unique_ptr<XmlReading> QtXml::begin(std::unique_ptr<FileReading> file) const
{
    return std::make_unique<QtXmlReading>(std::move(file));
}

} // namespace cuedrill::platform::qt_xml
