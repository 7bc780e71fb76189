#include "skl/TableFiles.h"

#include <stdexcept>
#include <string>

namespace skl {

namespace {

void PutText(ByteWriter& out, std::string_view text, std::size_t width) {
    std::string field(text.substr(0, width));
    field.resize(width, ' ');
    out.Raw(field);
}

void CheckSize(const ByteWriter& out, std::size_t start, std::size_t size) {
    if (out.Size() - start != size) throw std::logic_error("packed record of a wrong size");
}

}  // namespace

void PutRegion(ByteWriter& out) { PutText(out, kRegionName, kRegionSize); }

void PutCountry(ByteWriter& out, std::string_view country) {
    std::size_t start = out.Size();
    PutText(out, country, 40);
    PutText(out, kRegionName, kRegionSize);
    CheckSize(out, start, kCountrySize);
}

void PutState(ByteWriter& out, std::string_view state, std::string_view country) {
    std::size_t start = out.Size();
    PutText(out, state, 40);
    PutText(out, country, 40);
    CheckSize(out, start, kStateSize);
}

void PutCity(ByteWriter& out, std::string_view key) {
    std::size_t start = out.Size();
    PutText(out, key, kCitySize);
    CheckSize(out, start, kCitySize);
}

}  // namespace skl
