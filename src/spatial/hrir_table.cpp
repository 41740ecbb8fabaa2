#include "spatial/hrir_table.h"

#include <cmath>

namespace sonavel {

const HrirTable& HrirTable::Get() {
    static const HrirTable table;
    return table;
}

HrirTable::HrirTable() {
    for (int i = 0; i < kHrirResponses * kHrirTaps; ++i)
        values_[i] = std::round(kHrirIntegers[i] / 32768.0 * 1e7) / 1e7;
}

}  // namespace sonavel
