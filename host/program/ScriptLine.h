// splitScriptLine: the words of one line of a script. Blanks separate; "double quotes" hold a word with blanks
// together;
// "#" at the start of a word begins a remark. Nothing when a quote isn't closed.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessera::host {

std::optional<std::vector<std::string>> splitScriptLine(std::string_view line);

} // namespace tessera::host
