#include "env/file_assoc.h"

#include <cstdlib>

#include "env/paths.h"
#include "env/registry_backend.h"
#include "env/settings.h"

namespace quillet {

void AssociateFileType(Env& env, const std::string& extension, std::string folder,
                       const std::string& program, const std::string& description,
                       const std::string& iconFile) {
    const std::string root = std::to_string(reg::ClassesRoot);
    if (folder.empty() || (folder.back() != '\\' && folder.back() != '/')) folder += kSep;
    SetClassKeyValue(env, root, "." + extension, "", program);
    // Types that share a program share its class, so the last description written stays.
    SetClassKeyValue(env, root, program, "", description);
    if (!iconFile.empty())
        SetClassKeyValue(env, root, program + "\\DefaultIcon", "", iconFile + ",0");
    SetClassKeyValue(env, root, program + "\\shell\\open\\command", "",
                     "\"" + folder + program + "\" %1");
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
    AssociateFileType(env, "MV", parentFolder, "MyEditor.bat", "MV source code", "");
    AssociateFileType(env, "Out", parentFolder, "MyEditor.bat", "MV Output", "");
    AssociateFileType(env, "plt", parentFolder, "Dravik-XYplots", "XYplot file", "");
    AssociateFileType(env, "Fit", parentFolder, "MyEditor.bat", std::string("Fit") + " Input file",
                      "");
    if (FileExists(env, JoinPath(parentFolder, "f32main.exe")))
        AssociateFileType(env, "prz", parentFolder, "f32main.exe", "MV Presentation", "");
    ShowRegistryNotices(env);
}

}  // namespace quillet
