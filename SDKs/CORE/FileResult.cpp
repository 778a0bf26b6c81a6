// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/FileResult.h"

#include <system_error>

namespace Core
{
FileResult FileResult::failed(int error)
{
    return {std::generic_category().message(error)};
}
}
