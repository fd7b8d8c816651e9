#pragma once
// Where the View, Web Links and Help entries lead: documents beside the program, web
// addresses, the support mailbox. One table, so a deployment changes addresses in one place.
#include <string>

#include "env/env.h"

namespace quillet::ui {

struct WebLink {
    const char* menu;            // the menu entry's name, e.g. "mnuWebLinkO"
    const char* address;         // "" when no real address is known
    const char* manualSection;   // the heading of the manual that stands in for a missing address
};

// The web entry of a menu name, or nullptr.
const WebLink* FindWebLink(const std::string& menu);

// The support mailbox; empty when none is known, so the mail program asks for a recipient.
extern const char* const kSupportMailbox;

// A document of the View and Help menus: `menu` names the entry; the path is built from the
// program folder ("manual.pdf") or its parent folder ("donate.html").
struct DocumentLink {
    const char* menu;
    bool inParentFolder;
    const char* fileName;
};
const DocumentLink* FindDocument(const std::string& menu);
std::string DocumentPath(const Env& env, const DocumentLink& doc);

// Opens a mailto: text with every blank written as "%20".
void mailto(ShellOpener& shell, const std::string& text);
// The E-mail form's address: the mailbox and the subject that names this version.
std::string SupportMailto();

}  // namespace quillet::ui
