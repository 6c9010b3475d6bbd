#include "common/errors.h"
#include "platform/archive/packing.h"
#include "platform/qt_xml/qt_xml.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace cuedrill::platform::qt_xml {
namespace {

using Token = XmlReading::Token;

/// All tokens in one text, such as "<a>text</a>", and the error that ends them in brackets.
std::string tokens(std::string bytes)
{
    const auto xml = QtXml().begin(packing::file_of(std::move(bytes)));
    std::string result;
    try {
        for (Token token = xml->next(); token != Token::finish; token = xml->next()) {
            if (token == Token::text)
                result += xml->text();
            else
                result += (token == Token::start ? "<" : "</") + xml->name() + ">";
        }
    } catch (const common::Error& error) {
        result += std::string("[") + error.what() + "]";
    }
    return result;
}

std::string damaged(int line, std::string_view reason)
{
    return "[The file is damaged at line " + std::to_string(line) + ": " + std::string(reason) + ".]";
}

TEST(QtXml, gives_elements_and_texts)
{
    EXPECT_EQ(tokens("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a><b>Z\xC3\xBCrich</b><c/></a>\n"),
              "<a><b>Z\xC3\xBCrich</b><c></c></a>");
}

TEST(QtXml, gives_the_attributes_of_an_element)
{
    const auto xml = QtXml().begin(packing::file_of("<a id=\"7\" name=\"R&amp;D &#228;\"><b/></a>"));
    ASSERT_EQ(xml->next(), Token::start);
    EXPECT_EQ(xml->attribute("id"), "7");
    EXPECT_EQ(xml->attribute("name"), "R&D \xC3\xA4");
    EXPECT_EQ(xml->attribute("size"), std::nullopt);
    ASSERT_EQ(xml->next(), Token::start);
    EXPECT_EQ(xml->attribute("id"), std::nullopt);
}

TEST(QtXml, keeps_blanks_and_turns_line_ends_into_lf)
{
    EXPECT_EQ(tokens("<a>  one\r\n two\r\tthree \n</a>"), "<a>  one\n two\n\tthree \n</a>");
    EXPECT_EQ(tokens("<a>one&#13;&#10;two&#9;</a>"), "<a>one\r\ntwo\t</a>");
}

TEST(QtXml, skips_comments_and_instructions_and_takes_raw_text)
{
    EXPECT_EQ(tokens("<a><!-- <b> --><?do it?>1 &lt; 2<![CDATA[ & 3 > 2]]></a><!-- end -->"), "<a>1 < 2 & 3 > 2</a>");
}

TEST(QtXml, does_not_care_about_a_document_type_without_definitions)
{
    EXPECT_EQ(tokens("<!DOCTYPE kvtml PUBLIC \"kvtml2.dtd\" \"http://example.org/kvtml2.dtd\"><kvtml/>"),
              "<kvtml></kvtml>");
}

TEST(QtXml, reads_texts_of_some_length)
{
    const std::string text(60'000, 'x');
    EXPECT_TRUE(tokens("<a>" + text + "<b/>" + text + "</a>") == "<a>" + text + "<b></b>" + text + "</a>");
    EXPECT_EQ(tokens("<a>\n<b>" + std::string(300'000, 'x') + "</b></a>"),
              "<a>\n<b>" + damaged(2, "an element or a text is too long"));
}

TEST(QtXml, reads_utf_8_and_latin_1)
{
    EXPECT_EQ(tokens("\xEF\xBB\xBF<?xml version='1.0' encoding='utf-8'?><a>Z\xC3\xBCrich</a>"), "<a>Z\xC3\xBCrich</a>");
    EXPECT_EQ(tokens("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>Z\xFCrich</a>"), "<a>Z\xC3\xBCrich</a>");
    EXPECT_EQ(tokens("<a encoding=\"Latin\">Z\xC3\xBCrich</a>"), "<a>Z\xC3\xBCrich</a>") << "no declaration";
}

TEST(QtXml, refuses_other_encodings)
{
    const std::string words = damaged(1, "its encoding is not supported");
    EXPECT_EQ(tokens("<?xml version=\"1.0\" encoding=\"KOI8-R\"?><a/>"), words);
    EXPECT_EQ(tokens("<?xml version=\"1.0\" encoding=\"UTF-16\"?><a/>"), words);
    EXPECT_EQ(tokens("<?xml version=\"1.0\" encoding=\"\"?><a/>"), words);
    EXPECT_EQ(tokens("<?xml version=\"1.0\" encoding?><a/>"), words);
    EXPECT_EQ(tokens(std::string("\xFE\xFF\0<\0a\0/\0>", 10)), words);
    EXPECT_EQ(tokens(std::string("<\0a\0/\0>\0", 8)), words);
}

TEST(QtXml, keeps_characters_that_lie_across_its_pieces)
{
    for (std::size_t start = 16'370; start <= 16'385; ++start) {
        const std::string text = std::string(start, 'x') + "\xF0\x9F\x8E\xB2 \xE6\xBC\xA2";
        EXPECT_TRUE(tokens("<a>" + text + "</a>") == "<a>" + text + "</a>") << start;
    }
}

TEST(QtXml, gives_what_stands_before_bytes_that_are_no_characters)
{
    const std::string reason = "it has bytes that are no characters in UTF-8";
    EXPECT_EQ(tokens("<a>\n<b>text</b>\n</a\xFC>"), "<a>\n<b>text</b>\n" + damaged(3, reason));
    EXPECT_EQ(tokens("<a><b/>\xC3"), "<a><b></b>" + damaged(1, reason)) << "at the end of the file";
    const std::string many = "<b></b>" + std::string(16'374, ' ');
    EXPECT_TRUE(tokens("<a>" + many + "<b></b>\xA7\xA7</a>") == "<a>" + many + "<b></b>" + damaged(1, reason));
}

TEST(QtXml, says_in_which_line_the_file_is_damaged)
{
    EXPECT_EQ(tokens("<a>\n<b>text\n</a>"), "<a>\n<b>text\n" + damaged(3, "Opening and ending tag mismatch"));
    EXPECT_TRUE(tokens("<a>\n\n1 < 2</a>").starts_with("<a>\n\n1 [The file is damaged at line 3: "))
        << tokens("<a>\n\n1 < 2</a>");
}

TEST(QtXml, says_that_the_end_is_missing)
{
    EXPECT_EQ(tokens(""), damaged(1, "its end is missing"));
    const std::string file = "<a>\n<b id=\"1\">text</b></a>";
    for (std::size_t length = 0; length < file.size(); ++length)
        EXPECT_TRUE(tokens(file.substr(0, length)).ends_with(": its end is missing.]"))
            << length << tokens(file.substr(0, length));
}

TEST(QtXml, refuses_other_files)
{
    for (const std::string_view bytes : {"Norway;Oslo\n", "PK\3\4", "<a/><b/>", "<a/>text"})
        EXPECT_NE(tokens(std::string(bytes)).find("[The file is damaged at line 1: "), std::string::npos) << bytes;
}

TEST(QtXml, refuses_characters_that_xml_does_not_have)
{
    EXPECT_NE(tokens(std::string("<a>\0</a>", 8)).find("[The file is damaged"), std::string::npos);
    EXPECT_NE(tokens("<a>\x1B</a>").find("[The file is damaged"), std::string::npos);
}

TEST(QtXml, refuses_definitions)
{
    const std::string reason = "it defines entities or elements of its own, which is not supported";
    EXPECT_EQ(tokens("<!DOCTYPE a [<!ENTITY b \"text\">]>\n<a>&b;</a>"), damaged(1, reason));
    // Each entity stands for ten of the one before: all of them for ten gigabytes.
    std::string bomb = "<!DOCTYPE a [<!ENTITY e0 \"x\">";
    for (int i = 1; i <= 10; ++i) {
        bomb += "<!ENTITY e" + std::to_string(i) + " \"";
        for (int times = 0; times < 10; ++times)
            bomb += "&e" + std::to_string(i - 1) + ";";
        bomb += "\">";
    }
    EXPECT_EQ(tokens(bomb + "]><a>&e10;</a>"), damaged(1, reason));
}

TEST(QtXml, reads_no_other_file)
{
    EXPECT_EQ(tokens("<!DOCTYPE a [<!ENTITY b SYSTEM \"file:///etc/passwd\">]><a>&b;</a>"),
              damaged(1, "it defines entities or elements of its own, which is not supported"));
    EXPECT_EQ(tokens("<!DOCTYPE a SYSTEM \"file:///etc/passwd\"><a>&b;</a>"),
              "<a>" + damaged(1, "the entity \"b\" is not known"));
    EXPECT_NE(tokens("<a>&b;</a>").find("[The file is damaged at line 1: "), std::string::npos);
}

TEST(QtXml, refuses_an_element_that_is_too_long)
{
    std::string attributes;
    for (int i = 0; i < 100'000; ++i)
        attributes += " a" + std::to_string(i) + "=''";
    EXPECT_EQ(tokens("<a" + attributes + "/>"), damaged(1, "an element or a text is too long"));
}

TEST(QtXml, refuses_too_many_elements_within_each_other)
{
    std::string deep;
    for (int i = 0; i < 100'000; ++i)
        deep += "<a>\n";
    EXPECT_NE(tokens(deep).find(damaged(101, "too many elements are within each other")), std::string::npos);
}

/// A file that cannot be read to its end.
class FailingFile : public FileReading {
public:
    [[nodiscard]] std::uint64_t size() const override { return 100; }
    [[nodiscard]] std::string read(std::size_t most) override
    {
        if (std::exchange(begun_, true))
            throw common::Error("The disk has failed.");
        return "<a>" + std::string(most - 3, 'x');
    }
    void rewind() override {}
    void go_to(std::uint64_t /*place*/) override {}

private:
    bool begun_ = false;
};

TEST(QtXml, passes_on_why_the_file_cannot_be_read)
{
    const auto xml = QtXml().begin(std::make_unique<FailingFile>());
    ASSERT_EQ(xml->next(), Token::start);
    try {
        while (xml->next() == Token::text) {
        }
        FAIL() << "nothing was thrown";
    } catch (const common::Error& error) {
        EXPECT_STREQ(error.what(), "The disk has failed.");
    }
}

} // namespace
} // namespace cuedrill::platform::qt_xml
