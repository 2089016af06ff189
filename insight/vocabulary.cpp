// The language vocabulary: read once at start-up from six property lists of the
// resources into Global's tables (the reading itself is insight/vocabulary_lists.*).
#include "frame/global.h"

#include "frame/failure_report.h"
#include "insight/vocabulary_lists.h"

namespace {

VocabularyTarget tablesOf(Global& g) {
    return {g.KelvaroTypes,         g.KelvaroKeywords,   g.KelvaroConsts,    g.KelvaroCommands,
            g.dCompletion2function, g.dClassCompletion, g.dObjectCompletion};
}

} // namespace

void Global::addType(const QString& name) { tablesOf(*this).addType(name); }

void Global::addKeyword(const QString& word) { tablesOf(*this).addKeyword(word); }

void Global::addConst(const QString& name) { tablesOf(*this).addConst(name); }

void Global::addFunction(const QString& name, const QString& completionText) {
    tablesOf(*this).addFunction(name, completionText);
}

void Global::addClass(const QString& name, const Value& memberMap) { tablesOf(*this).addClass(name, memberMap); }

void Global::addObject(const QString& name, const Value& memberMap) { tablesOf(*this).addObject(name, memberMap); }

void Global::loadVocabulary(const QString& resourceFolder) {
    KLVR_TRACE("loadVocabulary");
    // A root that is not a dictionary fails the checked conversion. The failure is
    // reported like any other, and the start-up goes on with the next list.
    loadVocabularyLists(resourceFolder, tablesOf(*this), [](const Value& root) {
        try {
            KLVR__DICTIONARY(root);
        } catch (const KLException& failure) {
            klvrReportFailure(failure);
        }
    });
}
