#pragma once

#include <string>
#include <string_view>

namespace quillet {

// Removes every occurrence of `what` from `text`.
void removeAll(std::string& text, std::string_view what);

// Lower case of UTF-8 text, for comparing names the way a user reads them: the capitals of
// ASCII, Latin-1, Latin Extended-A and the modern Greek and Cyrillic alphabets are folded (all
// but İ, whose small letter takes two characters); other characters pass unchanged.
std::string lowercased(std::string_view text);

// `text` without the spaces and tabs at either end; newlines and other white space stay.
std::string_view trimmedSpacesAndTabs(std::string_view text);

} // namespace quillet
