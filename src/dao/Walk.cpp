#include "dao/Walk.h"

#include "dao/Database.h"
#include "dao/PlanCache.h"

namespace dao {

Walk::Walk(const Database& database)
    : plans_(database.sharedPlans()) {
    plans_->readAhead().beginWalk();
}

Walk::~Walk() {
    plans_->readAhead().endWalk();
}

} // namespace dao
