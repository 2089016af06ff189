#include "insight/file_scan.h"

#include "insight/declaration_scanner.h"
#include "insight/source_text.h"

FileScan::FileScan(const QByteArray& bytes) {
    const std::string_view ascii(bytes.constData(), size_t(bytes.size()));
    if (isAscii(ascii)) {
        asciiRecord_ = recordDeclarations(ascii);
        keepOwnCopies(*asciiRecord_, ascii);
        return;
    }
    const QString decoded = QString::fromUtf8(bytes);
    const std::u16string_view text(reinterpret_cast<const char16_t*>(decoded.utf16()), size_t(decoded.size()));
    record_ = recordDeclarations(text);
    keepOwnCopies(*record_, text);
}

const DeclarationLists& FileScan::lists() const {
    std::call_once(converted_, [this] {
        lists_ = asciiRecord_ ? declarationListsOf(*asciiRecord_) : declarationListsOf(*record_);
        asciiRecord_.reset();
        record_.reset();
    });
    return lists_;
}
