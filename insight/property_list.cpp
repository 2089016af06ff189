#include "insight/property_list.h"

#include <QFile>
#include <plist/plist.h>

namespace {

// Converts one property-list node, depth-first; nesting is bounded by the parser.
Value fromPlist(plist_t node) {
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

} // namespace

Value readPropertyList(const QString& path) {
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
