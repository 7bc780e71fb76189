// The classic two-pointer exchange quicksort, recursive, middle pivot; strings
// compare by their character codes, case counting.
#include "consolidation/Consolidation.h"

namespace skl {

bool QuickSortRange(std::vector<std::string>& items, int32_t low, int32_t high) {
    if (high <= low) return false;
    int32_t i = low;
    int32_t j = high;
    const std::string pivot = items.at(static_cast<size_t>(low + (high - low) / 2));
    while (i <= j) {
        while (i < high && items[static_cast<size_t>(i)] < pivot) ++i;
        while (j > low && pivot < items[static_cast<size_t>(j)]) --j;
        if (i <= j) {
            std::swap(items[static_cast<size_t>(i)], items[static_cast<size_t>(j)]);
            ++i;
            --j;
        }
    }
    if (low < j) QuickSortRange(items, low, j);
    if (i < high) QuickSortRange(items, i, high);
    return true;
}

bool SortVariantArray(std::vector<std::string>& items) {
    return QuickSortRange(items, 0, static_cast<int32_t>(items.size()) - 1);
}

}  // namespace skl
