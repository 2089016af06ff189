#pragma once
// Scanning a project's files before the opening asks for them. The start-up knows the
// project folder long before the window is up; the files are read and scanned on
// background threads meanwhile, and the opening takes each finished scan instead of
// reading the file again. A scan is taken only while the file is unchanged since it was
// read (same file, size and times); otherwise the opening scans it itself.

#include "insight/file_scan.h"

#include <QString>
#include <memory>

namespace scan_prefetch {

// Starts scanning the ".klvr" files at the top of `folder`, named folder + "/" + file
// name, on every core. Replaces an earlier prefetch; an empty folder starts none.
void start(const QString& folder);

// The prefetched scan of `path`, waiting while it is under way. Nothing when the file
// was not prefetched, its scan has not started (the caller then scans it itself), or the
// file changed since it was read.
std::shared_ptr<FileScan> take(const QString& path);

// Waits until every listed file of the current prefetch was read and scanned or taken
// (for callers that want the whole folder prefetched, such as tests and benchmarks).
void waitForAll();

// Stops the background threads and forgets every scan not taken.
void finish();

// How many prefetched scans `take` has handed out since the process started.
int takenCount();

} // namespace scan_prefetch
