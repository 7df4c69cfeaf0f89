#include "ExportMode.h"

ExportMode ExportModeOfText(const OuString& text) {
    return AreEqual(text, OuString("PROJECT", 0)) ? ExportMode::kProject
           : AreEqual(text, OuString("STUDY", 0)) ? ExportMode::kStudy
                                                  : ExportMode::kEverything;
}

bool IsLetThrough(ExportMode mode, CAEObject* child) {
    switch (mode) {
        case ExportMode::kProject:
            return child != nullptr && KindOf(*child) == format::Kind::kFile;
        case ExportMode::kStudy:
            return child == nullptr || KindOf(*child) != format::Kind::kIterationModel;
        case ExportMode::kEverything:
            break;
    }
    return true;
}
