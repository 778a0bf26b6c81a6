#include "Orbel/storage/Diagnosis.h"

#include "CORE/WholeCharacters.h"

namespace Orbel
{
std::string quoted(std::string_view text)
{
    constexpr size_t most = 40; // bytes
    const std::string_view start = Core::wholeCharacters(text, most);
    return '"' + std::string(start) + (start.size() < text.size() ? "...\"" : "\"");
}
}
