#pragma once

#include <string>
#include <vector>

namespace bench {

/// The least that the work of a command takes: the same rows read or written with SQLite's own functions in
/// one transaction, and documents that are only compared read by the JSON layer. Everything that a floor
/// writes is in memory before. Each runs in a process of its own:
///
/// - `write FROM TO`: writes the rows of a database to a new one.
/// - `copy FROM TO`: reads them, and writes them to a new one.
/// - `read FILE..`: reads all rows of databases.
/// - `text FILE FROM TO`: reads all rows of a project file, and writes the bytes of a text to a new file.
/// - `directory FILE DIRECTORY`: reads all rows of a project file, and the names, sizes, times and first four
///   thousand bytes of the files in a directory.
/// - `fetch FILE`: reads the rows of a server's database that a document is made of.
/// - `keys FILE FROM`: reads all rows of a project file, and sets the keys that another project file has.
/// - `parse FILE..`: reads documents.
///
/// Returns the processor time. Throws std::runtime_error.
double RunFloor(const std::string& name, const std::vector<std::string>& files);

}  // namespace bench
