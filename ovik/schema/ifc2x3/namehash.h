// The table of the IFC2X3 name hash. The generator and the library use the same one.
#pragma once

#include "ovik/schema/common/namehash.h"

namespace Ovik::IFC2X3Imp {

/// Hash of the names of the IFC2X3 vocabulary: classes, types, attributes and literals.
inline constexpr Schema::NameHash schemaNameHash(
    40897, false,
    {
        {'0', 5},    {'1', 3997}, {'2', 375},   {'3', 10},   {'4', 0},    {'5', 0},    {'8', 0},
        {'A', 795},  {'B', 3590}, {'C', 300},   {'D', 650},  {'E', 1010}, {'F', 2530}, {'G', 3524},
        {'H', 2305}, {'I', 65},   {'J', 260},   {'K', 3953}, {'L', 945},  {'M', 2550}, {'N', 1370},
        {'O', 1215}, {'P', 390},  {'Q', 3030},  {'R', 45},   {'S', 20},   {'T', 415},  {'U', 1210},
        {'V', 5846}, {'W', 2157}, {'X', 4000},  {'Y', 3607}, {'Z', 1450}, {'[', 5},    {'_', 2670},
        {'`', 0},    {'a', 0},    {'b', 10122}, {'c', 5},    {'d', 535},  {'e', 0},    {'f', 30},
        {'g', 3029}, {'h', 3333}, {'i', 15},    {'j', 9742}, {'k', 85},   {'l', 15},   {'m', 565},
        {'n', 10},   {'o', 10},   {'p', 85},    {'q', 340},  {'r', 0},    {'s', 15},   {'t', 0},
        {'u', 45},   {'v', 6962}, {'w', 1484},  {'x', 7912}, {'y', 4841}, {'z', 2655}, {'{', 0},
    });

static_assert(schemaNameHash("PredefinedType") == 1614);

}  // namespace Ovik::IFC2X3Imp
