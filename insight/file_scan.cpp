#include "insight/file_scan.h"

#include "insight/declaration_scanner.h"
#include "insight/source_text.h"

FileScan::FileScan(QByteArray bytes) : bytes_(std::move(bytes)) {
    const std::string_view ascii(bytes_.constData(), size_t(bytes_.size()));
    if (isAscii(ascii)) {
        asciiRecord_ = recordDeclarations(ascii);
        return;
    }
    decoded_ = QString::fromUtf8(bytes_);
    bytes_ = QByteArray();
    record_ = recordDeclarations(std::u16string_view(reinterpret_cast<const char16_t*>(decoded_.utf16()),
                                                     size_t(decoded_.size())));
}

const DeclarationLists& FileScan::lists() const {
    std::call_once(converted_, [this] {
        lists_ = asciiRecord_ ? declarationListsOf(*asciiRecord_) : declarationListsOf(*record_);
        asciiRecord_.reset();
        record_.reset();
        bytes_ = QByteArray();
        decoded_ = QString();
    });
    return lists_;
}
