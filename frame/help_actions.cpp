// The four help actions: each opens one document of the resources with an outside
// application.
#include "frame/global.h"

void Global::QuickStart(const Value&) {
    KLVR_TRACE("QuickStart");
    KLVR_PREVIEW(KLVR_NSBUNDLE_RESOURCEPATH() + QStringLiteral("/Quick Start.pdf"));
}

void Global::UsersGuide(const Value&) {
    KLVR_TRACE("UsersGuide");
    KLVR_PREVIEW(KLVR_NSBUNDLE_RESOURCEPATH() + QStringLiteral("/General Manual.pdf"));
}

void Global::ReleaseNotes(const Value&) {
    KLVR_TRACE("ReleaseNotes");
    KLVR_TEXTEDIT(KLVR_NSBUNDLE_RESOURCEPATH() + QStringLiteral("/Readme.txt"));
}

void Global::LanguageReference(const Value&) {
    KLVR_TRACE("LanguageReference");
    KLVR_SAFARI(KLVR_NSBUNDLE_RESOURCEPATH() + QStringLiteral("/Language Reference.html"));
}
