#include "ui/last_run.h"

#include "env/mdlRegistryAPI.h"
#include "env/paths.h"
#include "env/settings.h"

namespace quillet::ui {

LastRun FindLastRun(Env& env) {
    auto text = [&env](std::string_view key, const char* name) {
        return RegText(GetRegValue(env, reg::CurrentUser, std::string(key), name, reg::Sz));
    };
    std::string runFolder = text(kProductKey, "userPath");
    if (runFolder.empty()) runFolder = "demos";
    // A user folder outside the program folder is stored as a full path.
    if (runFolder.front() != '/' && runFolder.find(':') == std::string::npos)
        runFolder = JoinPath(env.programDir, runFolder);
    return {JoinPath(runFolder, "output"), text(kCompanyKey, "plotFile")};
}

}  // namespace quillet::ui
