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

// Orders two labels as a Mac user sees them sorted (the platform's localized case-insensitive
// comparison): case never matters; a letter with an accent sorts with its plain letter (é with
// e, Å with a) and only after it when everything else is equal; digits are characters, so
// "Item 10" comes before "Item 2"; other characters compare by code point. Negative, zero or
// positive as `a` comes before, with or after `b`.
int localizedCaseInsensitiveCompare(std::string_view a, std::string_view b);

// `text` as a one-line message shows what a user wrote: in double quotes, with quotes,
// backslashes and control characters escaped (so a name can never break the line), and cut
// after 60 bytes, on a character boundary, with "…".
std::string quotedForMessage(std::string_view text);

// `text` without the spaces and tabs at either end; newlines and other white space stay.
std::string_view trimmedSpacesAndTabs(std::string_view text);

} // namespace quillet
