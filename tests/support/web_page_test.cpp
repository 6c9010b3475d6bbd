#include "support/web_page.h"

#include <gtest/gtest.h>
#include <string>

namespace cuedrill::support {
namespace {

TEST(WebPage, that_is_an_address_stays)
{
    EXPECT_EQ(web_page_address("https://example.org/../a", "/usr/bin"), "https://example.org/../a");
    EXPECT_EQ(web_page_address("www.example.org", "/usr/bin"), "www.example.org");
}

TEST(WebPage, with_an_absolute_path_stays)
{
    EXPECT_EQ(web_page_address("/srv/manual/index.html", "/usr/bin"), "/srv/manual/index.html");
    EXPECT_EQ(web_page_address("/srv/link/../index.html", "/usr/bin"), "/srv/link/../index.html");
}

TEST(WebPage, with_a_relative_path_starts_at_the_executables_folder)
{
    EXPECT_EQ(web_page_address("../share/doc/cuedrill/manual/index.html", "/usr/bin"),
              "/usr/share/doc/cuedrill/manual/index.html");
    EXPECT_EQ(web_page_address("manual/index.html", "/opt/cuedrill"), "/opt/cuedrill/manual/index.html");
    EXPECT_EQ(web_page_address("./a/../index.html", "/opt/cuedrill/"), "/opt/cuedrill/index.html");
}

TEST(WebPage, is_the_one_of_the_build_by_default)
{
    EXPECT_EQ(default_web_page(), WEB_PAGE);
}

} // namespace
} // namespace cuedrill::support
