#pragma once
// The named variables of one formula object. The evaluator reaches them only through Find,
// so their storage can change without touching the evaluator.
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace quillet::expr {

class Variables {
public:
    void Set(const std::string& name, double value) { values_[name] = value; }
    // nullptr when there is no variable of exactly that name.
    const double* Find(std::string_view name) const {
        auto it = values_.find(name);
        return it == values_.end() ? nullptr : &it->second;
    }
    void Remove(const std::string& name) { values_.erase(name); }
    void Clear() { values_.clear(); }

private:
    std::map<std::string, double, std::less<>> values_;
};

}  // namespace quillet::expr
