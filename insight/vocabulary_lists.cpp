#include "insight/vocabulary_lists.h"

#include "insight/property_list.h"

#include <QFileInfo>

void VocabularyTarget::addFunction(const QString& name, const QString& completionText) {
    commands.append(name);
    ValueDictionary& texts = functions.entries();
    const QString key = name.toLower();
    if (!texts.contains(key))
        texts.insert(key, completionText);
}

void loadVocabularyLists(const QString& resourceFolder, VocabularyTarget target,
                         const std::function<void(const Value& root)>& notADictionary) {
    struct List {
        const char* file;
        std::function<void(VocabularyTarget&, const Value&, const Value&)> add;
    };
    const List lists[] = {
        {"/type.plist", [](VocabularyTarget& t, const Value&, const Value& v) { t.addType(v.toString()); }},
        {"/keyword.plist", [](VocabularyTarget& t, const Value&, const Value& v) { t.addKeyword(v.toString()); }},
        {"/const.plist", [](VocabularyTarget& t, const Value&, const Value& v) { t.addConst(v.toString()); }},
        {"/function.plist", [](VocabularyTarget& t, const Value& k, const Value& v) { t.addFunction(k.toString(), v.toString()); }},
        {"/class.plist", [](VocabularyTarget& t, const Value& k, const Value& v) { t.addClass(k.toString(), v); }},
        {"/object.plist", [](VocabularyTarget& t, const Value& k, const Value& v) { t.addObject(k.toString(), v); }},
    };
    for (const List& list : lists) {
        const QString path = resourceFolder + QLatin1String(list.file);
        if (!QFileInfo::exists(path))
            continue;
        const Value root = readPropertyList(path);
        if (!root.isDictionary()) {
            if (notADictionary)
                notADictionary(root);
            continue;
        }
        const ValueDictionary& entries = root.entries();
        for (qsizetype i = 0; i < entries.count(); ++i)
            list.add(target, Value(entries.keyAt(i)), entries.valueAt(i));
    }
}
