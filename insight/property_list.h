#pragma once
// Reading a property list (XML or binary) into boxed values: dictionaries keep the
// file's order, arrays their elements. A file that cannot be read or parsed reads as an
// empty dictionary. Qt Core and libplist only, so the language server shares it.

#include "frame/value.h"

#include <QString>

Value readPropertyList(const QString& path);
