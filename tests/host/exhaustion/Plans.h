#pragma once

#include "Failures.h"

namespace exhaustion {

inline bool IsReached(const Plan& plan, long operation) {
    return plan.first > 0 && (operation == plan.first || (plan.forGood && operation > plan.first));
}

}  // namespace exhaustion
