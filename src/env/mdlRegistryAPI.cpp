#include "env/mdlRegistryAPI.h"

#include <cmath>
#include <cstdlib>
#include <optional>

#include "env/errors.h"
#include "env/text.h"

namespace quillet {

namespace {

constexpr std::uint32_t kTextBufferSize = 1024;
constexpr std::uint32_t kBinaryBufferSize = 4096;

std::vector<unsigned char> RegBytes(const RegValue& value) {
    if (auto* bytes = std::get_if<std::vector<unsigned char>>(&value)) return *bytes;
    if (auto* n = std::get_if<std::int32_t>(&value)) {
        auto u = static_cast<std::uint32_t>(*n);
        return {static_cast<unsigned char>(u), static_cast<unsigned char>(u >> 8),
                static_cast<unsigned char>(u >> 16), static_cast<unsigned char>(u >> 24)};
    }
    std::string text = RegText(value);
    return {text.begin(), text.end()};
}

// Numbers in text are rounded half to even; what is no number, or too big, gives nothing.
std::optional<std::int32_t> RegInteger(const RegValue& value) {
    if (std::holds_alternative<std::monostate>(value)) return 0;
    if (auto* n = std::get_if<std::int32_t>(&value)) return *n;
    auto* text = std::get_if<std::string>(&value);
    if (!text) return std::nullopt;
    std::string t = Trim(*text);
    char* end = nullptr;
    double d = std::strtod(t.c_str(), &end);
    if (t.empty() || *end != '\0' || !std::isfinite(d)) return std::nullopt;
    d = std::nearbyint(d);
    if (d < INT32_MIN || d > INT32_MAX) return std::nullopt;
    return static_cast<std::int32_t>(d);
}

}  // namespace

std::string RegText(const RegValue& value) {
    if (auto* text = std::get_if<std::string>(&value)) return *text;
    if (auto* n = std::get_if<std::int32_t>(&value)) return std::to_string(*n);
    if (auto* bytes = std::get_if<std::vector<unsigned char>>(&value))
        return {bytes->begin(), bytes->end()};
    return {};
}

bool KeyExists(Env& env, RootKey root, const std::string& subKey) {
    KeyHandle key = 0;
    if (env.registry->OpenKey(root, subKey, reg::KeyRead, key) != reg::Success) return false;
    env.registry->CloseKey(key);
    return true;
}

bool CreateKey(Env& env, RootKey root, const std::string& subKey) {
    KeyHandle key = 0;
    std::uint32_t disposition = 0;
    // No access rights: the key is only made, and closed at once.
    if (env.registry->CreateKey(root, subKey, 0, key, disposition) != reg::Success)
        Raise(err::Registry, {}, "Unable to create the registry key");
    env.registry->CloseKey(key);
    return disposition == reg::OpenedExistingKey;
}

RegValue GetRegValue(Env& env, RootKey root, const std::string& subKey,
                     const std::string& valueName, std::uint32_t valueType,
                     const RegValue& defaultValue) {
    RegistryBackend& r = *env.registry;
    RegValue result = defaultValue;
    KeyHandle key = 0;
    if (r.OpenKey(root, subKey, reg::KeyRead, key) != reg::Success) return result;
    // The type the registry reports back is not compared with the one asked for.
    std::uint32_t type = valueType;
    switch (valueType) {
        case reg::Sz: {
            std::string buffer(kTextBufferSize, ' ');
            std::uint32_t count = kTextBufferSize;
            if (r.QueryValue(key, valueName, type, reinterpret_cast<unsigned char*>(buffer.data()),
                             count) == reg::Success) {
                // The count includes the terminating zero.
                if (count > 0) result = buffer.substr(0, count - 1);
                // Older settings hold the sibling program's folder cut to two letters.
                if (auto* text = std::get_if<std::string>(&result); text && *text == "\\Dr")
                    result = std::string("\\Dravik");
            }
            break;
        }
        case reg::Binary: {
            std::vector<unsigned char> buffer(kBinaryBufferSize);
            std::uint32_t count = kBinaryBufferSize;
            if (r.QueryValue(key, valueName, type, buffer.data(), count) == reg::Success) {
                buffer.resize(count);
                result = std::move(buffer);
            }
            break;
        }
        case reg::Dword: {
            unsigned char bytes[4] = {};
            std::uint32_t count = 4;
            if (r.QueryValue(key, valueName, type, bytes, count) == reg::Success)
                result = static_cast<std::int32_t>(bytes[0] | bytes[1] << 8 | bytes[2] << 16 |
                                                   static_cast<std::uint32_t>(bytes[3]) << 24);
            break;
        }
        default:
            // The key stays open on this path; no caller asks for another type.
            Raise(err::Registry, {}, "Unsupported value type");
    }
    r.CloseKey(key);
    return result;
}

void SetRegValue(Env& env, RootKey root, const std::string& subKey, const std::string& valueName,
                 std::uint32_t valueType, const RegValue& value) {
    RegistryBackend& r = *env.registry;
    KeyHandle key = 0;
    if (r.OpenKey(root, subKey, reg::KeyWrite, key) != reg::Success) return;
    switch (valueType) {
        case reg::Sz: {
            // Written without its terminating zero; the reader's count-minus-one rule pairs with
            // it.
            std::string text = RegText(value);
            r.SetValue(key, valueName, reg::Sz,
                       reinterpret_cast<const unsigned char*>(text.c_str()),
                       static_cast<std::uint32_t>(text.size()));
            break;
        }
        case reg::Binary: {
            std::vector<unsigned char> bytes = RegBytes(value);
            r.SetValue(key, valueName, reg::Binary, bytes.data(),
                       static_cast<std::uint32_t>(bytes.size()));
            break;
        }
        case reg::Dword:
            if (auto n = RegInteger(value)) {
                auto le = RegBytes(*n);
                r.SetValue(key, valueName, reg::Dword, le.data(), 4);
            }
            break;
        default:
            break;
    }
    r.CloseKey(key);
}

}  // namespace quillet
