#include "tools/printed_file.h"

#include "common/errors.h"

#include <ostream>

namespace cuedrill::tools {

void PrintedFile::finish()
{
    if (!(out_ << bytes_ << std::flush))
        throw common::Error("The output cannot be written.");
}

} // namespace cuedrill::tools
