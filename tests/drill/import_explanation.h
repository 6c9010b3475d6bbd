#pragma once

namespace cuedrill::drill {

/// What the box says before an import.
inline constexpr const char* import_explanation =
    "This function will import questions and answers form a text file and put them in the current "
    "course.\r\n"
    "In the text file each question must be preceded by '@Q@', and the related answer by '@A@'\r\n"
    "Questions and answers may be on different lines and consist of more than one line each.\r\n"
    "Spaces, newline and TAB characters at beginning or end of questions and answers are trimmed.\r\n"
    "Lines beginning with /*/ are ignored.\r\n"
    "Example 1: @Q@ What is the capital of Alabama?  @A@ Montgomery\r\n"
    "Example 2:\r\n"
    "@Q@\r\n"
    "What is the capital of Alabama?\r\n"
    "@A@\r\n"
    "Montgomery\r\n"
    "Do you wish to continue?";

} // namespace cuedrill::drill
