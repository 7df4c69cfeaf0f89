#include "DatabaseCommand.h"

#include "ExitStatus.h"
#include "host/system/Database.h"
#include "host/system/Text.h"

namespace host {

int ChangeDatabase(const std::string& file, Console& console, const std::function<int()>& work) {
    try {
        return work();
    } catch (const DatabaseError& error) {
        console.Say(Quoted(file) + " " + error.what() + ". Nothing was changed");
        return kFailure;
    }
}

void SayDryRun(bool isDryRun, Console& console) {
    if (isDryRun) {
        console.Say("nothing was changed, because of --dry-run");
    }
}

}  // namespace host
