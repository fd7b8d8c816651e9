#pragma once
// The program's only door to the registry: four operations that each open a key, do one
// job and close it again. Keys are a root plus a sub-key path with "\" between names.
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "env/env.h"
#include "env/registry_backend.h"

namespace quillet {

// A registry value as the program sees it: empty, a text, bytes or a 32-bit integer.
using RegValue =
    std::variant<std::monostate, std::string, std::vector<unsigned char>, std::int32_t>;

// True when root\subKey opens for reading.
bool KeyExists(Env& env, RootKey root, const std::string& subKey);

// Creates root\subKey and its missing parents; true when it existed already. A refusal
// raises 1001 "Unable to create the registry key".
bool CreateKey(Env& env, RootKey root, const std::string& subKey);

// The value of type reg::Sz, reg::Binary or reg::Dword, or `defaultValue` when the key or the
// value cannot be read. Texts hold at most 1023 characters; bytes at most 4096. Any other
// type raises 1001 "Unsupported value type".
RegValue GetRegValue(Env& env, RootKey root, const std::string& subKey,
                     const std::string& valueName, std::uint32_t valueType,
                     const RegValue& defaultValue = {});

// Writes a value into an existing key; never creates the key and never reports a failure.
void SetRegValue(Env& env, RootKey root, const std::string& subKey, const std::string& valueName,
                 std::uint32_t valueType, const RegValue& value);

// The value as text: a text as it is, an integer in decimal, bytes as they are, empty as "".
std::string RegText(const RegValue& value);

}  // namespace quillet
