#pragma once
// The ShellOpener port on the desktop: the desktop's own handler for documents, addresses
// and mailto:.
#include "env/ports.h"

namespace quillet::ui {

class QtShellOpener : public ShellOpener {
public:
    void Open(const std::string& target, const std::string& verb) override;
};

}  // namespace quillet::ui
