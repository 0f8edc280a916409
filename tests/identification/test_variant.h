#pragma once

#include "monitor/display/variant_text.h"
#include "simulation/variants.h"
#include "tests/support/simulation.h"

#include <gtest/gtest.h>

namespace tests {

// The text of a value, which must be left as it was and is then released.
inline std::wstring textAndRelease(VARIANT value) {
    const VARTYPE type = V_VT(&value);
    const void* const content = V_BYREF(&value);
    std::wstring text = wstringFromVARIANT(value);
    EXPECT_EQ(V_VT(&value), type);
    EXPECT_EQ(V_BYREF(&value), content);
    EXPECT_EQ(VariantClear(&value), S_OK) << "a safe array is still in use";
    return text;
}

} // namespace tests
