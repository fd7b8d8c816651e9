#pragma once
// Bad input to a fit: the message says what is wrong, for the report and for stderr.
#include <stdexcept>
#include <string>

namespace quillet::fitting {

class FitInputError : public std::runtime_error {
public:
    explicit FitInputError(const std::string& message) : std::runtime_error(message) {}
};

}  // namespace quillet::fitting
