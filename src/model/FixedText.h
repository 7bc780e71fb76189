#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace skl {

// A text field of N bytes: all NUL until assigned; assigning pads with blanks on
// the right and cuts at N.
template <std::size_t N>
struct FixedText {
    std::array<char, N> Bytes{};

    FixedText() = default;
    FixedText(std::string_view text) { Assign(text); }  // NOLINT: assignment form

    void Assign(std::string_view text) {
        for (std::size_t i = 0; i < N; ++i) Bytes[i] = i < text.size() ? text[i] : ' ';
    }
    FixedText& operator=(std::string_view text) {
        Assign(text);
        return *this;
    }
    std::string Str() const { return std::string(Bytes.data(), N); }
    bool operator==(const FixedText&) const = default;
};

}  // namespace skl
