// What an exact load keeps of a header beside its fields, so that a save gives it back. Internal.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ovik/imp/ifcheader.h"

namespace Ovik {

/// The parameters of the first two header statements as they stood in the file: the text of each,
/// as `'a'`, `('a','b')` or `$`. An empty text stands for a field that has been set anew. The third
/// statement tells the schema, which is always that of the model.
struct HeaderParameters {
    std::vector<std::string> fileDescription;
    std::vector<std::string> fileName;

    /// Gives `header` the parameters that its file has, after its fields have been set.
    static void keep(IfcHeader& header, HeaderParameters parameters) {
        header.parameters_ = std::make_shared<HeaderParameters>(std::move(parameters));
    }
    /// Those of `header`; null if it was not loaded exactly.
    static const HeaderParameters* of(const IfcHeader& header) { return header.parameters_.get(); }
};

}  // namespace Ovik
