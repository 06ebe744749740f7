#include "core/support/Text.hpp"

#include <cstdint>

namespace quillet {

namespace {

char32_t lowerCodePoint(char32_t c) {
    if ((c >= U'A' && c <= U'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7) ||
        (c >= 0x391 && c <= 0x3AB && c != 0x3A2) || (c >= 0x410 && c <= 0x42F)) {
        return c + 0x20;
    }
    if (c >= 0x400 && c <= 0x40F) {
        return c + 0x50;
    }
    // Capitals whose small letters lie outside their own run: Ÿ, and Greek with tonos.
    if (c == 0x178) {
        return 0xFF;
    }
    if (c == 0x386) {
        return 0x3AC;
    }
    if (c >= 0x388 && c <= 0x38A) {
        return c + 0x25;
    }
    if (c == 0x38C) {
        return 0x3CC;
    }
    if (c == 0x38E || c == 0x38F) {
        return c + 0x3F;
    }
    // Latin Extended-A pairs capitals and small letters as even/odd neighbours, except for a
    // stretch in the middle where the capital is odd.
    if ((c >= 0x100 && c <= 0x137) || (c >= 0x14A && c <= 0x177)) {
        return (c % 2 == 0) ? c + 1 : c;
    }
    if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) {
        return (c % 2 == 1) ? c + 1 : c;
    }
    return c;
}

// Decodes one UTF-8 sequence at `at`; malformed bytes decode as themselves.
char32_t decode(std::string_view text, std::size_t& at) {
    auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::uint8_t lead = byte(at);
    int length = lead < 0x80           ? 1
                 : (lead >> 5) == 0x6  ? 2
                 : (lead >> 4) == 0xE  ? 3
                 : (lead >> 3) == 0x1E ? 4
                                       : 0;
    if (length <= 1 || at + static_cast<std::size_t>(length) > text.size()) {
        return byte(at++);
    }
    char32_t c = lead & (0x7F >> length);
    for (int i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80) {
            return byte(at++);
        }
        c = (c << 6) | (byte(at + i) & 0x3F);
    }
    at += static_cast<std::size_t>(length);
    return c;
}

void encode(char32_t c, std::string& out) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// The plain letter of a small Latin-1 letter with an accent; other characters stay.
char32_t withoutAccent(char32_t c) {
    // U+00E0 to U+00FF; æ, ð, ÷ and þ are letters (or a sign) of their own.
    static constexpr std::u32string_view kPlain =
        U"aaaaaa\u00e6ceeeeiiii\u00f0nooooo\u00f7ouuuuy\u00fey";
    return c >= 0xE0 && c <= 0xFF ? kPlain[c - 0xE0] : c;
}

std::u32string codePoints(std::string_view text, bool plain) {
    std::u32string out;
    std::size_t at = 0;
    while (at < text.size()) {
        const char32_t lower = lowerCodePoint(decode(text, at));
        out += plain ? withoutAccent(lower) : lower;
    }
    return out;
}

} // namespace

int localizedCaseInsensitiveCompare(std::string_view a, std::string_view b) {
    // Letters first, accents only to break a tie.
    if (int order = codePoints(a, true).compare(codePoints(b, true)); order != 0) {
        return order;
    }
    return codePoints(a, false).compare(codePoints(b, false));
}

void removeAll(std::string& text, std::string_view what) {
    if (what.empty()) {
        return;
    }
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at)) {
        text.erase(at, what.size());
    }
}

std::string lowercased(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t start = at;
        const char32_t c = decode(text, at);
        // A lone byte past ASCII is malformed, not a Latin-1 letter: "\xC3" is no "Ã" to fold.
        const bool malformed = at - start == 1 && c >= 0x80;
        const char32_t lower = malformed ? c : lowerCodePoint(c);
        if (lower == c) {
            out.append(text.substr(start, at - start)); // keeps malformed bytes as they were
        } else {
            encode(lower, out);
        }
    }
    return out;
}

} // namespace quillet

namespace quillet {

std::string_view trimmedSpacesAndTabs(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string quotedForMessage(std::string_view text) {
    constexpr std::size_t kLongest = 60;
    std::string_view shown = text;
    if (shown.size() > kLongest) {
        std::size_t cut = kLongest;
        // Never split a character: back up over continuation bytes (10xxxxxx).
        while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) {
            --cut;
        }
        shown = text.substr(0, cut);
    }
    std::string quoted = "\"";
    for (char c : shown) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            quoted += '\\';
            quoted += c;
        } else if (c == '\n') {
            quoted += "\\n";
        } else if (c == '\t') {
            quoted += "\\t";
        } else if (byte < 0x20 || byte == 0x7F) {
            static constexpr char kHex[] = "0123456789abcdef";
            quoted += "\\u00";
            quoted += kHex[byte >> 4];
            quoted += kHex[byte & 0xF];
        } else {
            quoted += c;
        }
    }
    quoted += shown.size() < text.size() ? "…\"" : "\"";
    return quoted;
}

} // namespace quillet
