// Collection operations on boxed arrays and dictionaries, and property-list reading.
#include "frame/runtime.h"

#include <QFile>
#include <plist/plist.h>

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

// Converts one property-list node, depth-first; nesting is bounded by the parser.
static Value fromPlist(plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_DICT: {
        Value dict = Value::dictionary();
        plist_dict_iter it = nullptr;
        plist_dict_new_iter(node, &it);
        for (;;) {
            char* key = nullptr;
            plist_t child = nullptr;
            plist_dict_next_item(node, it, &key, &child);
            if (!child) {
                free(key);
                break;
            }
            dict.entries().insert(QString::fromUtf8(key), fromPlist(child));
            free(key);
        }
        free(it);
        return dict;
    }
    case PLIST_ARRAY: {
        ValueArray items;
        uint32_t n = plist_array_get_size(node);
        for (uint32_t i = 0; i < n; ++i)
            items.append(fromPlist(plist_array_get_item(node, i)));
        return Value::array(items);
    }
    case PLIST_STRING:
    case PLIST_KEY: {
        uint64_t length = 0;
        const char* text = plist_get_string_ptr(node, &length);
        return Value(QString::fromUtf8(text, qsizetype(length)));
    }
    case PLIST_BOOLEAN: {
        uint8_t b = 0;
        plist_get_bool_val(node, &b);
        return Value(b != 0);
    }
    case PLIST_UINT: {
        uint64_t n = 0;
        plist_get_uint_val(node, &n);
        return Value(qint64(n));
    }
    case PLIST_REAL: {
        double d = 0;
        plist_get_real_val(node, &d);
        return Value(d);
    }
    case PLIST_DATA: {
        char* data = nullptr;
        uint64_t length = 0;
        plist_get_data_val(node, &data, &length);
        Value v = Value::bytes(QByteArray(data, qsizetype(length)));
        free(data);
        return v;
    }
    default:
        return Value();
    }
}

Value KLVR_PLIST(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Value::dictionary();
    QByteArray bytes = file.readAll();
    if (bytes.isEmpty() || bytes.size() > 0x7fffffff)
        return Value::dictionary();
    plist_t root = nullptr;
    plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &root);
    if (!root)
        return Value::dictionary();
    Value result = fromPlist(root);
    plist_free(root);
    return result;
}
