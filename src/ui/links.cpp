#include "ui/links.h"

#include <array>

#include "env/paths.h"
#include "env/text.h"
#include "model/catalogue.h"

namespace quillet::ui {

namespace {

const std::array<WebLink, 15> kWebLinks = {{
    {"mnuWebPres", "", "Manufacturing Presentation"},
    {"mnuWebPres2", "", "Lorentzian Series Presentation"},
    {"mnuWebPres3", "", "Irregular Heart Beat Presentation"},
    {"mnuWebPres4", "", "Plane Crash Locator App Presentation"},
    {"mnuWebVideo", "", "Curve Fitting Class Slides"},
    {"mnuWebLinkEd", "https://notepad-plus-plus.org/", "Editors"},
    {"mnuWebLink3", "", "Calculus-level Textbook"},
    {"mnuWebLinkComp", "", "Morvane Compiler"},
    {"mnuWebLinkTessaly", "", "Tessaly"},
    {"mnuWebLinkDravik", "", "Dravik"},
    {"mnuWebLinkKembrel", "", "Kembrel"},
    {"mnuWebLinkO", "", "Orlinda"},
    {"mnuHelpVideos", "", "Video Apps for Classes"},
    {"mnuHelpForum", "", "Collaboration"},
    {"mnuHelpPrayer", "", "Prayer Tree"},
}};

const std::array<DocumentLink, 5> kDocuments = {{
    {"mnuViewFeatures", true, "Morvane-flyer.pdf"},
    {"mnuViewLorentz", false, "CurveFitting-Lorentzian-series.pdf"},
    {"mnuViewModLorentz", false, "Lorrentzian-series-vs-mod.-series.pdf"},
    {"mnuHelpManual", false, "manual.pdf"},
    {"mnuHelpDonate", true, "donate.html"},
}};

}  // namespace

const char* const kSupportMailbox = "";

const WebLink* FindWebLink(const std::string& menu) {
    for (const auto& l : kWebLinks)
        if (menu == l.menu) return &l;
    return nullptr;
}

const DocumentLink* FindDocument(const std::string& menu) {
    for (const auto& d : kDocuments)
        if (menu == d.menu) return &d;
    return nullptr;
}

std::string DocumentPath(const Env& env, const DocumentLink& doc) {
    return JoinPath(doc.inParentFolder ? env.parentDir : env.programDir, doc.fileName);
}

void mailto(ShellOpener& shell, const std::string& text) { shell.Open(ReplaceAll(text, " ", "%20"), "open"); }

std::string SupportMailto() {
    return std::string("mailto:") + kSupportMailbox + "?subject=" + kProductName + " v. " + kVersion +
           ": ... please REPLACE these notes with your sub-subject here";
}

}  // namespace quillet::ui
