// Collection operations on boxed arrays and dictionaries, and property-list reading
// (the reader itself is insight/property_list.*, which programs without widgets share).
#include "frame/runtime.h"

#include "insight/property_list.h"

qint64 KLVR_NSARRAY_COUNT(const Value& array) { return array.items().size(); }

Value KLVR_NSARRAY_OBJECT(const Value& array, qint64 i) {
    const ValueArray& items = array.items();
    if (i < 0 || i >= items.size())
        KLVR_EXCEPTION(QStringLiteral("NSRangeException"),
                       QStringLiteral("index %1 beyond bounds [0 .. %2]").arg(i).arg(items.size() - 1));
    return items.at(i);
}

void KLVR_NSMUTABLEARRAY_APPEND(const Value& array, const Value& x) { array.items().append(x); }

void KLVR_NSMUTABLEARRAY_INSERT(const Value& array, const Value& x, qint64 i) {
    ValueArray& items = array.items();
    items.insert(qBound<qint64>(0, i, items.size()), x);
}

void KLVR_NSMUTABLEARRAY_REMOVE(const Value& array, qint64 i) {
    ValueArray& items = array.items();
    if (i >= 0 && i < items.size())
        items.removeAt(i);
}

void KLVR_NSMUTABLEARRAY_REMOVEOBJECT(const Value& array, const Value& x) { array.items().removeAll(x); }

void KLVR_NSMUTABLEARRAY_REMOVEALL(const Value& array) { array.items().clear(); }

qint64 KLVR_NSDICTIONARY_COUNT(const Value& dictionary) { return dictionary.entries().count(); }

Value KLVR_NSDICTIONARY_OBJECT(const Value& dictionary, const Value& key) {
    return dictionary.entries().value(key.toString());
}

void KLVR_NSMUTABLEDICTIONARY_APPEND(const Value& dictionary, const Value& key, const Value& value) {
    ValueDictionary& d = dictionary.entries();
    if (!d.contains(key.toString()))
        d.insert(key.toString(), value);
}

void KLVR_NSMUTABLEDICTIONARY_REPLACE(const Value& dictionary, const Value& key, const Value& value) {
    dictionary.entries().insert(key.toString(), value);
}

bool KLVR_NSMUTABLEDICTIONARY_CONTAINS(const Value& dictionary, const Value& key) {
    return dictionary.entries().contains(key.toString());
}

Value KLVR_NSMUTABLEDICTIONARY_OBJECT(const Value& dictionary, const Value& keyOrPosition) {
    const ValueDictionary& d = dictionary.entries();
    if (keyOrPosition.isInteger()) {
        qint64 i = keyOrPosition.toInteger();
        return i >= 0 && i < d.count() ? d.valueAt(i) : Value();
    }
    return d.value(keyOrPosition.toString());
}

Value KLVR_NSMUTABLEDICTIONARY_KEY(const Value& dictionary, qint64 i) {
    const ValueDictionary& d = dictionary.entries();
    return i >= 0 && i < d.count() ? Value(d.keyAt(i)) : Value();
}

Value KLVR_NSMUTABLEDICTIONARY_VALUE(const Value& dictionary, qint64 i) {
    const ValueDictionary& d = dictionary.entries();
    return i >= 0 && i < d.count() ? d.valueAt(i) : Value();
}

void KLVR_NSMUTABLEDICTIONARY_REMOVE(const Value& dictionary, const Value& key) {
    dictionary.entries().remove(key.toString());
}

void KLVR_NSMUTABLEDICTIONARY_REMOVEALL(const Value& dictionary) { dictionary.entries().clear(); }

Value KLVR_PLIST(const QString& path) { return readPropertyList(path); }
