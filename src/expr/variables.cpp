#include "expr/variables.h"

#include <algorithm>

namespace quillet::expr {

VarSlot Variables::SlotOf(const std::string& name) {
    auto [it, added] = slots_.try_emplace(name, static_cast<std::uint32_t>(values_.size()));
    if (added) {
        values_.push_back(0);
        defined_.push_back(0);
    }
    return VarSlot{it->second};
}

const double* Variables::Find(std::string_view name) const {
    auto it = slots_.find(name);
    if (it == slots_.end() || !defined_[it->second]) return nullptr;
    return &values_[it->second];
}

void Variables::Remove(std::string_view name) {
    auto it = slots_.find(name);
    if (it != slots_.end()) defined_[it->second] = 0;
}

void Variables::Clear() { std::fill(defined_.begin(), defined_.end(), std::uint8_t{0}); }

}  // namespace quillet::expr
