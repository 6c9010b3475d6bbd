#pragma once

#include "fakes/course_builder.h"

#include <string>
#include <utility>
#include <vector>

namespace cuedrill::exchange {

/// The texts of records, columns "q" and "a".
using Texts = std::vector<std::pair<std::string, std::string>>;

inline Texts texts_of(const fakes::CourseContents& contents)
{
    Texts texts;
    for (const fakes::QaRow& row : contents.qa)
        texts.emplace_back(row.q, row.a);
    return texts;
}

} // namespace cuedrill::exchange
