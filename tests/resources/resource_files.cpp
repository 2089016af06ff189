#include "resource_files.h"

#include <QFile>
#include <QVariantList>
#include <QVariantMap>

#include <plist/plist.h>

#include <cstdlib>
#include <memory>

namespace resources_test {

QString sourceResources() { return QStringLiteral(KELVARO_SOURCE_DIR "/resources"); }

QString builtResources() { return QStringLiteral(KELVARO_APP_DIR "/Contents/Resources"); }

namespace {

QString takeString(char* text) {
    const QString result = QString::fromUtf8(text ? text : "");
    std::free(text);
    return result;
}

QVariant toVariant(plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_DICT: {
        QVariantMap map;
        plist_dict_iter iter = nullptr;
        plist_dict_new_iter(node, &iter);
        for (;;) {
            char* key = nullptr;
            plist_t value = nullptr;
            plist_dict_next_item(node, iter, &key, &value);
            if (!value) {
                std::free(key);
                break;
            }
            map.insert(takeString(key), toVariant(value));
        }
        std::free(iter);
        return map;
    }
    case PLIST_ARRAY: {
        QVariantList list;
        const uint32_t count = plist_array_get_size(node);
        for (uint32_t i = 0; i < count; ++i)
            list.append(toVariant(plist_array_get_item(node, i)));
        return list;
    }
    case PLIST_STRING: {
        char* text = nullptr;
        plist_get_string_val(node, &text);
        return takeString(text);
    }
    case PLIST_UINT: {
        uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return QVariant::fromValue(qint64(value));
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return bool(value);
    }
    default:
        return {};
    }
}

} // namespace

PropertyList readPropertyList(const QString& path) {
    PropertyList result;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return result;
    const QByteArray bytes = file.readAll();
    plist_t root = nullptr;
    plist_from_xml(bytes.constData(), uint32_t(bytes.size()), &root);
    if (!root)
        return result;
    std::unique_ptr<void, void (*)(plist_t)> owner(root, plist_free);
    result.parsed = true;
    result.dictionaryRoot = plist_get_node_type(root) == PLIST_DICT;
    result.root = toVariant(root);
    return result;
}

QVariantMap vocabularyDictionary(const QString& fileName) {
    return readPropertyList(sourceResources() + QLatin1Char('/') + fileName).root.toMap();
}

} // namespace resources_test
