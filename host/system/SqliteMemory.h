#pragma once

namespace host {

/// Makes SQLite tell this program when it gets no memory. It must be called before SQLite is used.
void WatchSqliteMemory();

/// Whether SQLite has ever asked for memory in vain, as far as this program can know. SQLite says that there
/// is no memory also for a damaged record whose length wraps around.
bool HasSqliteLackedMemory();

}  // namespace host
