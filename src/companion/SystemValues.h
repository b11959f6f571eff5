#pragma once
// Per-user and system-wide settings kept in the database, read as numbers:
//   TQ7TSystemUser(TSyUName, TSyUUserID, TSyUValue)   TQ7TSystem(TSysName, TSysValue)
// Each read opens its own client-side connection and closes it again. An empty connection
// string opens nothing. No row, a NULL, or any failure gives 0.
#include <QString>
#include <cstdint>

namespace tq7 {

double GetUserSystemValue(int32_t userNumber, const QString& name, const QString& connectionString);
double GetSystemValue(const QString& name, const QString& connectionString);

}  // namespace tq7
