#pragma once
// The language vocabulary's six property lists and the tables they fill. The IDE fills
// Global's tables with them at start-up; the language server fills tables of its own.
// Qt Core only.

#include "frame/value.h"

#include <QString>
#include <QStringList>
#include <functional>

// Where the lists go; the references must outlive the loading.
struct VocabularyTarget {
    QStringList& types;
    QStringList& keywords;
    QStringList& consts;
    QStringList& commands;
    Value& functions; // lower-case function name -> completion text
    Value& classes;   // vocabulary class -> member map
    Value& objects;   // predefined object -> member map

    void addType(const QString& name) { types.append(name); }
    void addKeyword(const QString& word) { keywords.append(word); }
    void addConst(const QString& name) { consts.append(name); }
    // A later function whose lower-case name equals an earlier one's keeps the earlier
    // completion text.
    void addFunction(const QString& name, const QString& completionText);
    void addClass(const QString& name, const Value& memberMap) { classes.entries().insert(name, memberMap); }
    void addObject(const QString& name, const Value& memberMap) { objects.entries().insert(name, memberMap); }
};

// Tables owned by their holder (a program without Global).
struct VocabularyTables {
    QStringList types, keywords, consts, commands;
    Value functions = Value::dictionary();
    Value classes = Value::dictionary();
    Value objects = Value::dictionary();
    VocabularyTarget target() { return {types, keywords, consts, commands, functions, classes, objects}; }
};

// Reads "/type.plist", "/keyword.plist", "/const.plist", "/function.plist",
// "/class.plist" and "/object.plist" of `resourceFolder`, in that order, passing every
// entry in the list's own order to the add operation of its table. A missing list is
// skipped; a list whose root is not a dictionary is handed to `notADictionary` and
// skipped (the IDE reports it as a failed checked conversion).
void loadVocabularyLists(const QString& resourceFolder, VocabularyTarget target,
                         const std::function<void(const Value& root)>& notADictionary = {});
