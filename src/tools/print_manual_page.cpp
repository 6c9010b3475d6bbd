#include "tools/manual_page.h"

#include <cstdlib>
#include <iostream>

// Prints the manual page of cuedrill-course; used by the build only.
int main()
{
    return std::cout << cuedrill::tools::manual_page() << std::flush ? EXIT_SUCCESS : EXIT_FAILURE;
}
