#pragma once
// Numbers of the run-time errors that the data layer raises itself.
#include "base/RunTimeError.h"

namespace dao::err {

using mkl::Long;

inline constexpr Long OutOfMemory = 7;
inline constexpr Long InternalError = 3000;
inline constexpr Long InvalidName = 3005;
inline constexpr Long LockedExclusively = 3006;
inline constexpr Long TableExists = 3010;
inline constexpr Long ObjectNotFound = 3011;
inline constexpr Long NoSuchIndex = 3015;
inline constexpr Long NoCurrentIndex = 3019;
inline constexpr Long UpdateWithoutEdit = 3020;
inline constexpr Long NoCurrentRecord = 3021;
inline constexpr Long DuplicateKey = 3022;
inline constexpr Long FileNotFound = 3024;
inline constexpr Long DiskFull = 3026;
inline constexpr Long ReadOnly = 3027;
inline constexpr Long UserRefused = 3029;
inline constexpr Long WrongPassword = 3031;
inline constexpr Long NoTransaction = 3034;
inline constexpr Long DiskError = 3043;
inline constexpr Long InvalidPath = 3044;
inline constexpr Long DamagedDatabase = 3049;
inline constexpr Long CannotOpenFile = 3051;
inline constexpr Long NullInKey = 3058;
inline constexpr Long Interrupted = 3059;
inline constexpr Long ExecuteOfSelect = 3065;
inline constexpr Long TableNotFound = 3078;
inline constexpr Long NotPermitted = 3112;
inline constexpr Long UnknownColumn = 3127;
inline constexpr Long NoStatement = 3129;
inline constexpr Long TextAfterEnd = 3142;
inline constexpr Long PasswordInAddress = 3147;
inline constexpr Long PasswordNeeded = 3148;
inline constexpr Long NoServer = 3151;
inline constexpr Long InvalidBookmark = 3159;
inline constexpr Long FieldTooSmall = 3163;
inline constexpr Long FieldNotUpdatable = 3164;
inline constexpr Long RecordDeleted = 3167;
inline constexpr Long ChangedByAnother = 3197;
inline constexpr Long RelatedRecords = 3200;
inline constexpr Long DatabaseExists = 3204;
inline constexpr Long InvalidOperation = 3219;
inline constexpr Long TransactionGivenUp = 3246;
inline constexpr Long NotSupportedByType = 3251;
inline constexpr Long Locked = 3260;
inline constexpr Long ItemNotFound = 3265;
inline constexpr Long NullNotAllowed = 3314;
inline constexpr Long RuleViolated = 3317;
inline constexpr Long NotUpdatable = 3326;
inline constexpr Long UnknownFormat = 3343;
inline constexpr Long ValueCount = 3346;
inline constexpr Long NumericFieldOverflow = 3349;
inline constexpr Long TooComplex = 3360;
inline constexpr Long ObjectInvalid = 3420;
inline constexpr Long ConversionError = 3421;

} // namespace dao::err
