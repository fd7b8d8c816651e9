#pragma once
// The named variables of one formula object. Every name ever used keeps its slot, defined or
// not, so a compiled formula and a client's handle can reach a value without a name look-up.
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quillet::expr {

// A variable's place in its object; valid for the object's whole life.
struct VarSlot {
    std::uint32_t index = 0;
};

class Variables {
public:
    // The slot of that name, added undefined when the name is new.
    VarSlot SlotOf(const std::string& name);
    void Set(VarSlot s, double value) {
        values_[s.index] = value;
        defined_[s.index] = 1;
    }
    void Set(const std::string& name, double value) { Set(SlotOf(name), value); }
    // nullptr when there is no defined variable of exactly that name.
    const double* Find(std::string_view name) const;
    void Remove(std::string_view name);
    void Clear();

    bool Defined(VarSlot s) const { return defined_[s.index] != 0; }
    double Value(VarSlot s) const { return values_[s.index]; }
    // Every slot's value, defined or not, by index.
    const std::vector<double>& Values() const { return values_; }

private:
    std::map<std::string, std::uint32_t, std::less<>> slots_;
    std::vector<double> values_;
    std::vector<std::uint8_t> defined_;
};

}  // namespace quillet::expr
