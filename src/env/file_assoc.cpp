#include "env/file_assoc.h"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

#include "env/paths.h"
#include "env/registry_backend.h"
#include "env/settings.h"
#include "env/text.h"

namespace quillet {

namespace {

struct ClassValue {
    std::string subKey;
    std::string text;
};

// The default texts that associate one file type, in the order they are set.
std::vector<ClassValue> FileTypeValues(const std::string& extension, std::string folder,
                                       const std::string& program, const std::string& description,
                                       const std::string& iconFile) {
    if (folder.empty() || (folder.back() != '\\' && folder.back() != '/')) folder += kSep;
    std::vector<ClassValue> values = {{"." + extension, program}, {program, description}};
    if (!iconFile.empty()) values.push_back({program + "\\DefaultIcon", iconFile + ",0"});
    values.push_back({program + "\\shell\\open\\command", "\"" + folder + program + "\" %1"});
    return values;
}

// A later text for the same key replaces an earlier one in its place.
void Merge(std::vector<ClassValue>& into, std::vector<ClassValue> values) {
    for (ClassValue& v : values) {
        auto same = std::find_if(into.begin(), into.end(), [&](const ClassValue& old) {
            return EqualsNoCase(old.subKey, v.subKey);
        });
        if (same == into.end())
            into.push_back(std::move(v));
        else
            same->text = std::move(v.text);
    }
}

void SetClassValues(Env& env, const std::vector<ClassValue>& values) {
    const std::string root = std::to_string(reg::ClassesRoot);
    for (const ClassValue& v : values) SetClassKeyValue(env, root, v.subKey, "", v.text);
}

}  // namespace

void AssociateFileType(Env& env, const std::string& extension, std::string folder,
                       const std::string& program, const std::string& description,
                       const std::string& iconFile) {
    // Types that share a program share its class, so the last description written stays.
    SetClassValues(env, FileTypeValues(extension, std::move(folder), program, description, iconFile));
}

long SetClassKeyValue(Env& env, const std::string& root, const std::string& subKey,
                      const std::string& valueKey, const std::string& data) {
    RegistryBackend& registry = *env.registry;
    KeyHandle key = 0;
    long rc = registry.CreateKeyPlain(static_cast<RootKey>(std::strtol(root.c_str(), nullptr, 10)),
                                      subKey, key);
    // On success the key stays open: a first start leaves a dozen handles until the program ends.
    if (rc == 0) return registry.SetDefaultText(key, valueKey, data);
    return registry.CloseKey(key);
}

void RegisterFileTypesOnFirstStart(Env& env, std::int16_t runCount,
                                   const std::string& parentFolder) {
    if (runCount >= 1) return;
    // The types that share MyEditor.bat would each set its description in turn; setting only
    // the last one leaves the same keys and makes a start that repeats the registration (the
    // counter stays below 1 until an exit) change nothing.
    std::vector<ClassValue> values;
    Merge(values, FileTypeValues("MV", parentFolder, "MyEditor.bat", "MV source code", ""));
    Merge(values, FileTypeValues("Out", parentFolder, "MyEditor.bat", "MV Output", ""));
    Merge(values, FileTypeValues("plt", parentFolder, "Dravik-XYplots", "XYplot file", ""));
    Merge(values, FileTypeValues("Fit", parentFolder, "MyEditor.bat", std::string("Fit") + " Input file", ""));
    if (FileExists(env, JoinPath(parentFolder, "f32main.exe")))
        Merge(values, FileTypeValues("prz", parentFolder, "f32main.exe", "MV Presentation", ""));
    {
        // A first start sets a dozen class texts: one write of the hive, not one per text.
        RegistryBatch batch(*env.registry);
        SetClassValues(env, values);
    }
    ShowRegistryNotices(env);
}

}  // namespace quillet
