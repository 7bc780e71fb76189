#include "platform/Win1252.h"

#include <array>
#include <cstdint>

namespace skl {

namespace {

// Unicode code points of the Windows-1252 codes 0x80 to 0x9F. The five codes the
// code page leaves undefined stand for the C1 control of the same number, the
// way the Windows conversion functions pass them through.
constexpr std::array<char32_t, 32> kHighTable = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80-87
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88-8F
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90-97
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98-9F
};

char32_t CodePointOf(uint8_t byte) {
    if (byte >= 0x80 && byte <= 0x9F) return kHighTable[byte - 0x80];
    return byte;
}

// The Windows-1252 byte of a code point, or '?' when the code page has none.
uint8_t ByteOf(char32_t codePoint) {
    if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint <= 0xFF)) {
        return static_cast<uint8_t>(codePoint);
    }
    for (size_t i = 0; i < kHighTable.size(); ++i) {
        if (kHighTable[i] == codePoint) return static_cast<uint8_t>(0x80 + i);
    }
    return '?';
}

// Decodes one UTF-8 sequence at text[pos]. Gives the code point and its length,
// or length 0 when the bytes there are no valid, shortest-form sequence.
struct Decoded {
    char32_t CodePoint = 0;
    size_t Length = 0;
};

Decoded DecodeUtf8(std::string_view text, size_t pos) {
    auto byteAt = [&](size_t i) { return static_cast<uint8_t>(text[i]); };
    uint8_t lead = byteAt(pos);
    // The lead byte gives the length, its payload bits and the smallest code
    // point that needs this length (anything below is an overlong form).
    size_t length = 0;
    char32_t minimum = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        minimum = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        minimum = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        minimum = 0x10000;
    } else {
        return {};
    }
    char32_t codePoint = lead & (0x7F >> length);
    if (pos + length > text.size()) return {};
    for (size_t i = 1; i < length; ++i) {
        uint8_t next = byteAt(pos + i);
        if ((next & 0xC0) != 0x80) return {};
        codePoint = (codePoint << 6) | (next & 0x3F);
    }
    bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (codePoint < minimum || codePoint > 0x10FFFF || surrogate) return {};
    return {codePoint, length};
}

}  // namespace

char ToUpper1252(char c) {
    auto b = static_cast<uint8_t>(c);
    if (b >= 'a' && b <= 'z') return static_cast<char>(b - 0x20);
    if (b >= 0xE0 && b <= 0xFE && b != 0xF7) return static_cast<char>(b - 0x20);
    switch (b) {
        case 0x9A:
            return static_cast<char>(0x8A);  // š Š
        case 0x9C:
            return static_cast<char>(0x8C);  // œ Œ
        case 0x9E:
            return static_cast<char>(0x8E);  // ž Ž
        case 0xFF:
            return static_cast<char>(0x9F);  // ÿ Ÿ
        default:
            return c;  // ß and µ have no upper form
    }
}

char ToLower1252(char c) {
    auto b = static_cast<uint8_t>(c);
    if (b >= 'A' && b <= 'Z') return static_cast<char>(b + 0x20);
    if (b >= 0xC0 && b <= 0xDE && b != 0xD7) return static_cast<char>(b + 0x20);
    switch (b) {
        case 0x8A:
            return static_cast<char>(0x9A);
        case 0x8C:
            return static_cast<char>(0x9C);
        case 0x8E:
            return static_cast<char>(0x9E);
        case 0x9F:
            return static_cast<char>(0xFF);
        default:
            return c;
    }
}

std::string Upper1252(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = ToUpper1252(c);
    return result;
}

std::string Lower1252(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = ToLower1252(c);
    return result;
}

std::string TrimBlanks(std::string_view text) {
    size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    size_t last = text.find_last_not_of(' ');
    return std::string(text.substr(first, last - first + 1));
}

std::string Utf8ToWin1252(std::string_view utf8) {
    std::string result;
    result.reserve(utf8.size());
    size_t pos = 0;
    while (pos < utf8.size()) {
        auto byte = static_cast<uint8_t>(utf8[pos]);
        if (byte < 0x80) {
            result += static_cast<char>(byte);
            ++pos;
            continue;
        }
        Decoded decoded = DecodeUtf8(utf8, pos);
        if (decoded.Length == 0) {
            // Not UTF-8: most likely a name written in the code page itself.
            result += static_cast<char>(byte);
            ++pos;
            continue;
        }
        result += static_cast<char>(ByteOf(decoded.CodePoint));
        pos += decoded.Length;
    }
    return result;
}

std::string Win1252ToUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size() + text.size() / 4);
    for (char c : text) AppendUtf8(result, CodePointOf(static_cast<uint8_t>(c)));
    return result;
}

void AppendUtf8(std::string& out, char32_t codePoint) {
    // A lone surrogate or a value beyond Unicode has no UTF-8 form.
    if ((codePoint >= 0xD800 && codePoint <= 0xDFFF) || codePoint > 0x10FFFF) codePoint = 0xFFFD;
    if (codePoint < 0x80) {
        out += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        out += static_cast<char>(0xC0 | (codePoint >> 6));
        out += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        out += static_cast<char>(0xE0 | (codePoint >> 12));
        out += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (codePoint >> 18));
        out += static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (codePoint & 0x3F));
    }
}

}  // namespace skl
