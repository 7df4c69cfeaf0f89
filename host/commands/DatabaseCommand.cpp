#include "DatabaseCommand.h"

#include "ExitStatus.h"
#include "host/system/Database.h"
#include "host/system/DatabaseJournal.h"
#include "host/system/Text.h"

namespace host {
namespace {

/// What the file has in it after the failure.
std::string TextOf(Remains remains, const std::string& file) {
    switch (remains) {
        case Remains::TheNew:
            return "The change was made all the same, but may be lost if the computer stops now";
        case Remains::AJournal:
            return "The change could not be undone yet: leave " +
                   Quoted(JournalOf(PathFromUtf8(file)).filename()) +
                   " beside the file. The next command that can write to both undoes it";
        case Remains::Unknown:
            return "Whether the change was made cannot be told, because the file cannot be read";
        case Remains::TheOld:
            break;
    }
    return "Nothing was changed";
}

}  // namespace

int ChangeDatabase(const std::string& file, Console& console, const std::function<int()>& work) {
    try {
        return work();
    } catch (const DatabaseError& error) {
        console.Say(Quoted(file) + " " + error.what() + ". " + TextOf(error.WhatRemains(), file));
        return kFailure;
    }
}

void SayDryRun(bool isDryRun, Console& console) {
    if (isDryRun) {
        console.Note("nothing was changed, because of --dry-run");
    }
}

}  // namespace host
