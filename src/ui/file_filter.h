#pragma once
// The library's file-dialog filter ("Label|pattern|Label|pattern...") as Qt name filters.
#include <QStringList>
#include <string>

namespace quillet::ui {

// Each label keeps its own text; the patterns Qt matches follow in parentheses, which the
// dialog hides. "*.*" means every file, also a name without a dot.
QStringList NameFilters(const std::string& filter);

}  // namespace quillet::ui
