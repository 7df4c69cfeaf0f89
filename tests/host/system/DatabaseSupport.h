#pragma once

#include <filesystem>
#include <string>

#include "host/HostSupport.h"
#include "host/commands/ProgramSupport.h"
#include "host/projectfile/ProjectTables.h"
#include "host/system/Database.h"

namespace host {

/// Tests that open databases in a folder where the program, which is another process, works on them too.
class DatabaseFiles : public ProgramInFolder {
protected:
    std::string ErrorOfOpening(const std::filesystem::path& file, DatabaseUse use) const {
        return ErrorOf([&] { const Database database(file, use, kProjectFileKind); });
    }
};

}  // namespace host
