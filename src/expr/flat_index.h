#pragma once
// A map from 64-bit keys to register numbers for the compiler, with open addressing in flat
// arrays: one look-up per literal and per step, without an allocation for each, keeps parsing
// as quick as it was before constants and steps were shared.
#include <cstdint>
#include <vector>

namespace quillet::expr {

class FlatIndex {
public:
    // The value stored under `key`; when there is none, stores `value` and returns it.
    std::uint32_t FindOrAdd(std::uint64_t key, std::uint32_t value) {
        if (2 * (count_ + 1) > keys_.size()) Grow();
        for (std::size_t i = Home(key);; i = (i + 1) & (keys_.size() - 1)) {
            if (!used_[i]) {
                used_[i] = 1;
                keys_[i] = key;
                values_[i] = value;
                ++count_;
                return value;
            }
            if (keys_[i] == key) return values_[i];
        }
    }

private:
    std::size_t Home(std::uint64_t key) const {
        return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15u) >> 32) & (keys_.size() - 1);
    }
    void Grow() {
        std::vector<std::uint64_t> keys = std::move(keys_);
        std::vector<std::uint32_t> values = std::move(values_);
        std::vector<std::uint8_t> used = std::move(used_);
        const std::size_t size = keys.empty() ? 16 : 2 * keys.size();
        keys_.assign(size, 0);
        values_.assign(size, 0);
        used_.assign(size, 0);
        count_ = 0;
        for (std::size_t i = 0; i < keys.size(); ++i)
            if (used[i]) FindOrAdd(keys[i], values[i]);
    }

    std::vector<std::uint64_t> keys_;
    std::vector<std::uint32_t> values_;
    std::vector<std::uint8_t> used_;
    std::size_t count_ = 0;
};

}  // namespace quillet::expr
