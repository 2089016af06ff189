#pragma once
// One scan of one file as the parser keeps it: the engine's record of it, holding its
// own copies of the few texts it needs (names, titles, types), so the file's bytes are
// not kept. The Qt lists are made from the record the first time anyone asks for them,
// once, on the asking thread; then the record is let go. Opening a project scans every
// file but shows one, so most files never pay for their lists until something needs
// them.

#include "insight/declarations.h"
#include "insight/scan_record.h"

#include <QByteArray>
#include <QString>

#include <mutex>
#include <optional>

class FileScan {
public:
    // Scans `bytes`, the file as stored (ASCII as bytes, anything else decoded). The
    // bytes are not kept, so a reader may pass a buffer it reuses.
    explicit FileScan(const QByteArray& bytes);

    // The lists of the scan; safe to call from any thread.
    const DeclarationLists& lists() const;

private:
    mutable std::once_flag converted_;
    mutable std::optional<ScanRecord<char>> bytesRecord_;
    mutable std::optional<ScanRecord<char16_t>> record_;
    mutable DeclarationLists lists_;
};
