#include "catalogue/CatalogueReplica.h"

#include "catalogue/Refusal.h"

namespace mkl {

namespace {

bool isDigit(Long number) {
    return number >= 0 && number <= 9;
}

} // namespace

bool hasReplicaDigit(const dao::Database& database) {
    return isDigit(database.LocalNumber());
}

Long replicaDigit(const dao::Database& database) {
    const Long number = database.LocalNumber();
    if (!isDigit(number))
        refuse(refusal::WrongType, TextId::CatalogueForeignDigit, {database.Name(), QString::number(number)});
    return number;
}

void setReplicaDigit(dao::Database& database, Long digit) {
    if (!isDigit(digit)) refuse(err::InvalidArgument, TextId::CatalogueNoDigit, {QString::number(digit)});
    database.setLocalNumber(digit);
}

} // namespace mkl
