#include "DatabaseError.h"

namespace host {

void RefuseDamaged(const std::string& reason) {
    throw DatabaseError("is damaged: " + reason + ". Restore it from a copy");
}

void RefuseForeign(const std::string& reason) {
    throw DatabaseError("is damaged or was made by another program: " + reason + ". Restore it from a copy");
}

}  // namespace host
