// The language vocabulary: read once at start-up from six property lists of the
// resources into Global's tables.
#include "frame/global.h"

#include "frame/failure_report.h"

#include <functional>

void Global::addType(const QString& name) { KelvaroTypes.append(name); }

void Global::addKeyword(const QString& word) { KelvaroKeywords.append(word); }

void Global::addConst(const QString& name) { KelvaroConsts.append(name); }

void Global::addFunction(const QString& name, const QString& completionText) {
    KelvaroCommands.append(name);
    // A later function whose lower-case name equals an earlier one's keeps the earlier
    // completion text.
    KLVR_NSMUTABLEDICTIONARY_APPEND(dCompletion2function, KLVR_LCASE(name), completionText);
}

void Global::addClass(const QString& name, const Value& memberMap) {
    KLVR_NSMUTABLEDICTIONARY_REPLACE(dClassCompletion, name, memberMap);
}

void Global::addObject(const QString& name, const Value& memberMap) {
    KLVR_NSMUTABLEDICTIONARY_REPLACE(dObjectCompletion, name, memberMap);
}

void Global::loadVocabulary(const QString& resourceFolder) {
    KLVR_TRACE("loadVocabulary");
    enum class Pass { Value, KeyAndValue };
    struct List {
        const char* file;
        Pass pass;
        std::function<void(Global*, const Value&, const Value&)> add;
    };
    const List lists[] = {
        {"/type.plist", Pass::Value, [](Global* g, const Value&, const Value& v) { g->addType(KLVR_STRING(v)); }},
        {"/keyword.plist", Pass::Value, [](Global* g, const Value&, const Value& v) { g->addKeyword(KLVR_STRING(v)); }},
        {"/const.plist", Pass::Value, [](Global* g, const Value&, const Value& v) { g->addConst(KLVR_STRING(v)); }},
        {"/function.plist", Pass::KeyAndValue,
         [](Global* g, const Value& k, const Value& v) { g->addFunction(KLVR_STRING(k), KLVR_STRING(v)); }},
        {"/class.plist", Pass::KeyAndValue,
         [](Global* g, const Value& k, const Value& v) { g->addClass(KLVR_STRING(k), v); }},
        {"/object.plist", Pass::KeyAndValue,
         [](Global* g, const Value& k, const Value& v) { g->addObject(KLVR_STRING(k), v); }},
    };
    for (const List& list : lists) {
        KLVR_STEP("loadVocabulary");
        QString path = resourceFolder + QLatin1String(list.file);
        if (!KLVR_NSFILEMANAGER_EXISTSFILE(path))
            continue;
        // A root that is not a dictionary fails the checked conversion. The failure is
        // reported like any other, and the start-up goes on with the next list.
        try {
            Value dictionary = KLVR__DICTIONARY(KLVR_PLIST(path));
            for (qint64 i = 0; i < KLVR_NSDICTIONARY_COUNT(dictionary); ++i)
                list.add(this, KLVR_NSMUTABLEDICTIONARY_KEY(dictionary, i),
                         KLVR_NSMUTABLEDICTIONARY_VALUE(dictionary, i));
        } catch (const KLException& failure) {
            klvrReportFailure(failure);
        }
    }
}
