#include "exchange/decks/html_entities.h"
#include "exchange/decks/html_text.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>

namespace cuedrill::decks {
namespace {

struct Case {
    const char* name;
    std::string html;
    std::string text;
    std::int64_t media = 0;
    std::int64_t clozes = 0;
};

class HtmlText : public testing::TestWithParam<Case> {};

TEST_P(HtmlText, becomes_plain)
{
    HtmlLosses losses;
    EXPECT_EQ(html_to_text(GetParam().html, losses), GetParam().text);
    EXPECT_EQ(losses.media, GetParam().media);
    EXPECT_EQ(losses.clozes, GetParam().clozes);
}

std::string named(const testing::TestParamInfo<Case>& info)
{
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(
    Tags, HtmlText,
    testing::Values(Case{"empty", "", ""}, Case{"plain", "a b", "a b"}, Case{"bold", "a<b>b</b>c", "abc"},
                    Case{"attributes", "<font color=\"#f00\" size='2'>red</font> hat", "red hat"},
                    Case{"sign_in_a_value", R"(<a title="a > b" href='x>y'>c</a>)", "c"},
                    Case{"blank_before_a_value", "<a title = \"a > b\">c", "c"},
                    Case{"apostrophe_in_a_tag", "<b it's>x</b> it's <i>y</i>", "x it's y"},
                    Case{"value_without_end", "<a title=\"b>c</a>d", "cd"},
                    Case{"values_without_end", "<a b=\"c d='e>f</a>g<a b=\"h>i", "i"},
                    Case{"different_values_without_end", "<a b=\"c>d<a b='e>f", "df"},
                    Case{"comment", "a<!-- b > <br> -->c", "ac"}, Case{"comment_without_end", "a<!-- b <b>c", "a"},
                    Case{"declaration", "<!DOCTYPE html><?xml version=\"1.0\"?>a", "a"},
                    Case{"style", "a<style type=\"text/css\">.b { c: '</d' }</style>e", "ae"},
                    Case{"script", "a<SCRIPT>if (b < c) d</Script >e", "ae"},
                    Case{"style_without_end", "a<style>b</b>c", "a"}, Case{"closing_style", "a</style>b", "ab"},
                    Case{"not_a_tag", "a < b <5 <> </ > c", "a < b <5 <> </ > c"},
                    Case{"tag_without_end", "1 <b and more", "1 <b and more"}, Case{"tag_at_the_end", "a<", "a<"},
                    Case{"closing_tag_at_the_end", "a</", "a</"},
                    Case{"sign_only_in_a_value", "a <b c=\"d>e\" f", "a e\" f"}),
    named);

INSTANTIATE_TEST_SUITE_P(
    Lines, HtmlText,
    testing::Values(Case{"break", "a<br>b<br/>c<BR />d", "a\nb\nc\nd"}, Case{"breaks", "a<br><br>b", "a\n\nb"},
                    Case{"paragraphs", "<p>a</p><p>b</p>", "a\nb"}, Case{"paragraph_behind_text", "a<p>b", "a\nb"},
                    Case{"divs", "a<div>b</div><div>c</div>d", "a\nb\nc\nd"},
                    Case{"empty_line_of_an_editor", "a<div><br></div><div>b</div>", "a\n\nb"},
                    Case{"nested_divs", "<div><div>a</div></div><div>b</div>", "a\nb"},
                    Case{"list", "x:<ul>\n <li>a</li>\n <li> b</li>\n</ul>\ny", "x:\na\nb\ny"},
                    Case{"table", "<table><tr><td>a</td><td>b</td></tr><tr><th>c</th><td>d</td></tr></table>",
                         "a b\nc d"},
                    Case{"heading", "<h1>a</h1>b", "a\nb"},
                    Case{"quotation", "a<blockquote>b</blockquote>c", "a\nb\nc"},
                    Case{"outer_breaks", "<br><div>a</div><br><br>", "a"}, Case{"breaks_alone", "<br><br>", ""},
                    Case{"paragraph_is_no_prefix", "a<param>b<picture>c", "abc"}),
    named);

INSTANTIATE_TEST_SUITE_P(Blanks, HtmlText,
                         testing::Values(Case{"runs", "  a \t\r\n b  ", "a b"},
                                         Case{"blanks_between_tags", "a <b> b </b> c", "a b c"},
                                         Case{"no_break_spaces", "a&nbsp;&nbsp; b\u00A0c&#160;d", "a b c d"},
                                         Case{"no_break_spaces_at_the_ends", "&nbsp;a&nbsp;<br>&nbsp;b&nbsp;", "a\nb"},
                                         Case{"entities_of_white_space", "a&#10;b&#x9;c&#32;&#32;d", "a b c d"},
                                         Case{"blanks_alone", " &nbsp;\t", ""},
                                         Case{"thin_spaces_stay", "a\u2009b", "a\u2009b"}),
                         named);

INSTANTIATE_TEST_SUITE_P(
    Entities, HtmlText,
    testing::Values(Case{"signs", "&lt;b&gt; &amp;amp; &quot;&apos;", "<b> &amp; \"'"},
                    Case{"letters", "caf&eacute; &Eacute; &szlig; &alpha;", "café É ß α"},
                    Case{"punctuation", "&hellip;&ndash;&mdash;&euro;&rarr;", "…–—€→"},
                    Case{"numbers", "&#233;&#xe9;&#XE9;&#8364;&#x1D11E;", "ééé€𝄞"},
                    Case{"numbers_of_the_code_page", "&#128;&#150;", "€–"},
                    Case{"numbers_of_no_character", "&#0;&#xD800;&#x110000;&#99999999999999999999;",
                         "\uFFFD\uFFFD\uFFFD\uFFFD"},
                    Case{"unknown", "a &b; &; &#; &#x; &#12a; &#xg; &eacute", "a &b; &; &#; &#x; &#12a; &#xg; &eacute"},
                    Case{"question", "a & b; c", "a & b; c"}, Case{"last_character", "a&", "a&"},
                    Case{"marks_of_tags_are_no_tags", "&lt;br&gt;", "<br>"}),
    named);

INSTANTIATE_TEST_SUITE_P(Media, HtmlText,
                         testing::Values(Case{"picture", "a<img src=\"b.png\" />c", "ac", 1},
                                         Case{"sound", "a [sound:b c.mp3] d[sound:e.ogg]", "a d", 2},
                                         Case{"speech", "[anki:play:q:0]a", "a", 1},
                                         Case{"sound_without_end", "[sound:a", "[sound:a"},
                                         Case{"other_brackets", "[a] [soundless] []", "[a] [soundless] []"},
                                         Case{"film", "<video src=\"a\">b</video>", "b", 1},
                                         Case{"alone", "<img src=a><img src=b>", "", 2}),
                         named);

INSTANTIATE_TEST_SUITE_P(
    Clozes, HtmlText,
    testing::Values(Case{"cloze", "a {{c1::b}} c", "a b c", 0, 1}, Case{"hint", "{{c12::b::hint}} c", "b c", 0, 1},
                    Case{"two", "{{c1::a}} {{c2::b}}", "a b", 0, 2},
                    Case{"nested", "{{c1::a {{c2::b::x}} c::y}} d", "a b c d", 0, 2},
                    Case{"nested_in_a_hint", "{{c1::a::x {{c2::b}} y}}", "a", 0, 2},
                    Case{"with_tags", "{{c1::<b>a</b>::<i>b</i>}}", "a", 0, 1},
                    Case{"without_end", "a {{c1::b", "a {{c1::b"},
                    Case{"inner_one_with_an_end", "{{c1::a {{c2::b}}", "{{c1::a b", 0, 1},
                    Case{"end_alone", "a}} b::c", "a}} b::c"},
                    Case{"others", "{{a}} {{c::b}} {{c1:b}} {{c1", "{{a}} {{c::b}} {{c1:b}} {{c1"}),
    named);

TEST(HtmlLossesInWords, are_a_sentence_for_each_sort)
{
    EXPECT_EQ(words_of(HtmlLosses{}), "");
    EXPECT_EQ(words_of(HtmlLosses{.media = 1, .clozes = 1}),
              "1 picture or sound was left out.\n1 cloze deletion was read as its text.\n");
    EXPECT_EQ(words_of(HtmlLosses{.media = 12, .clozes = 3}),
              "12 pictures and sounds were left out.\n3 cloze deletions were read as their texts.\n");
}

TEST(HtmlLosses, are_added_up)
{
    HtmlLosses losses;
    EXPECT_EQ(html_to_text("<img>", losses) + html_to_text("[sound:x]{{c1::a}}", losses), "a");
    EXPECT_EQ(losses.media, 2);
    EXPECT_EQ(losses.clozes, 1);
}

TEST(Entity, is_found_by_its_name)
{
    EXPECT_EQ(code_of_entity("AElig"), 0xC6U);
    EXPECT_EQ(code_of_entity("zwnj"), 0x200CU);
    EXPECT_EQ(code_of_entity("nbsp"), 0xA0U);
    EXPECT_EQ(code_of_entity("NBSP"), 0U);
    EXPECT_EQ(code_of_entity("zzz"), 0U);
    EXPECT_EQ(code_of_entity(""), 0U);
}

/// Texts on which a careless reader would search to the end again and again. They end in a moment, or never.
class HostileHtml : public testing::TestWithParam<const char*> {};

TEST_P(HostileHtml, is_read_in_linear_time)
{
    std::string html;
    while (html.size() < 300'000)
        html += GetParam();
    HtmlLosses losses;
    EXPECT_LE(html_to_text(html, losses).size(), html.size());
    EXPECT_LE(html_to_text(html + "\" ' > ] }} -->", losses).size(), html.size() + 20);
}

INSTANTIATE_TEST_SUITE_P(Texts, HostileHtml,
                         testing::Values("<", "<a", "<a ", "<a b=\"", "<a b='", "<a b=\"c'", "<a b=\">\" ", "<!--",
                                         "<!-- -", "</", "<style>", "<style></", "&", "&#",
                                         "&#1111111111111111111111111111111", "[sound:", "{{c1::", "{{c1::a::",
                                         "{{c1::a}}", "{{c1", "}}", "::", "<br", "<p>", "<a =\"\"  "));

} // namespace
} // namespace cuedrill::decks
