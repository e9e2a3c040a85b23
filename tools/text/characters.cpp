#include "tools/text/characters.h"

#include <cctype>
#include <cstdlib>
#include <string>
#include <string_view>

namespace zorl2_inspect {

bool CanShowUtf8() {
  const char* const terminal = std::getenv("TERM");
  if (terminal != nullptr && std::string_view(terminal) == "dumb") return false;
  for (const char* const name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const char* const value = std::getenv(name);
    if (value == nullptr || *value == '\0') continue;
    // "C.UTF-8", "en_GB.utf8"
    std::string letters;
    for (const char* c = value; *c != '\0'; ++c) {
      if (*c != '-') letters += static_cast<char>(std::tolower(static_cast<unsigned char>(*c)));
    }
    return letters.find("utf8") != std::string::npos;
  }
  return false;
}

}  // namespace zorl2_inspect
