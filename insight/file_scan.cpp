#include "insight/file_scan.h"

#include "insight/declaration_scanner.h"
#include "insight/source_text.h"

FileScan::FileScan(const QByteArray& bytes) {
    const std::string_view raw(bytes.constData(), size_t(bytes.size()));
    if (scannableAsBytes(raw)) {
        bytesRecord_ = recordDeclarations(raw);
        keepOwnCopies(*bytesRecord_, raw);
        return;
    }
    const QString decoded = decodedSourceText(bytes);
    const std::u16string_view text(reinterpret_cast<const char16_t*>(decoded.utf16()), size_t(decoded.size()));
    record_ = recordDeclarations(text);
    keepOwnCopies(*record_, text);
}

const DeclarationLists& FileScan::lists() const {
    std::call_once(converted_, [this] {
        lists_ = bytesRecord_ ? declarationListsOf(*bytesRecord_) : declarationListsOf(*record_);
        bytesRecord_.reset();
        record_.reset();
    });
    return lists_;
}
