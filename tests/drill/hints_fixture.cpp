#include "drill/hints_fixture.h"

#include "common/text.h"

#include <utility>

namespace cuedrill::drill {

void HintsFixture::show_hint(std::deque<double> numbers)
{
    random.queue = std::move(numbers);
    random.calls = 0;
    database.forget();
    toolbar(4);
}

std::string HintsFixture::hint() const
{
    return form1.t_hint.text_value;
}

HintsFixture::Words HintsFixture::words() const
{
    Words result;
    const std::string text = hint();
    for (std::size_t begin = text.find('['); begin != std::string::npos; begin = text.find('[', begin + 1))
        result.push_back(text.substr(begin + 1, text.find(']', begin) - begin - 1));
    return result;
}

std::size_t HintsFixture::word_place(const std::string& word) const
{
    const std::size_t bracket = hint().find("[" + word + "]");
    EXPECT_NE(bracket, std::string::npos) << word << " is not in the hint" << hint();
    return common::code_points(hint().substr(0, bracket)) + 1;
}

void HintsFixture::click_hint(std::size_t place)
{
    user([&] { form1.t_hint.click(place); });
}

void HintsFixture::click_word(const std::string& word)
{
    click_hint(word_place(word));
}

void HintsFixture::go_to_word(const std::string& word)
{
    form1.t_hint.take_focus();
    form1.t_hint.caret_value = word_place(word);
}

void HintsFixture::press_in_hint(const platform::KeyPress& key)
{
    clock.steady_seconds_more += 1;
    user([&] { form1.press_in(form1.t_hint, key); });
}

void HintsFixture::start_with_answers(const std::string& first, const Words& others)
{
    builder.question("first", first).level(2).attempts(4).fails(1).tested_ago(24h);
    for (const std::string& other : others)
        builder.question("asks for " + other, other).level(0).attempts(0).fails(0).tested_ago(1h);
    start();
    yes();
    ASSERT_EQ(question(), "first");
}

} // namespace cuedrill::drill
