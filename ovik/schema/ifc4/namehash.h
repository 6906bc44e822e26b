// The table of the IFC4 name hash. The generator and the library use the same one.
#pragma once

#include "ovik/schema/common/namehash.h"

namespace Ovik::IFC4Imp {

/// Hash of the names of the IFC4 vocabulary: classes, types, attributes and literals.
inline constexpr Schema::NameHash schemaNameHash(
    45293, true,
    {
        {'0', 0},    {'1', 120},  {'2', 240},  {'3', 40},   {'4', 0},    {'5', 0},    {'A', 20},
        {'B', 5029}, {'C', 65},   {'D', 240},  {'E', 0},    {'F', 1215}, {'G', 6026}, {'H', 7406},
        {'I', 15},   {'J', 475},  {'K', 2300}, {'L', 0},    {'M', 1010}, {'N', 40},   {'O', 5},
        {'P', 405},  {'Q', 2330}, {'R', 5},    {'S', 165},  {'T', 5},    {'U', 580},  {'V', 7751},
        {'W', 7004}, {'X', 6972}, {'Y', 1697}, {'Z', 415},  {'_', 6636}, {'`', 10},   {'a', 15},
        {'b', 8957}, {'c', 0},    {'d', 2115}, {'e', 0},    {'f', 15},   {'g', 3815}, {'h', 1167},
        {'i', 560},  {'j', 6531}, {'k', 15},   {'l', 980},  {'m', 2540}, {'n', 180},  {'o', 1525},
        {'p', 1350}, {'q', 210},  {'r', 5},    {'s', 10},   {'t', 0},    {'u', 1100}, {'v', 6999},
        {'w', 115},  {'x', 8422}, {'y', 7749}, {'z', 1665}, {'{', 0},
    });

static_assert(schemaNameHash("PredefinedType") == 6759);

}  // namespace Ovik::IFC4Imp
