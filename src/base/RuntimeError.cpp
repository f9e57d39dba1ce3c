#include "base/RuntimeError.h"

namespace tavrel {

RuntimeError::RuntimeError(int number, QString description)
    : m_number(number)
    , m_description(description.isEmpty() ? standardDescription(number) : std::move(description))
    , m_what(QStringLiteral("Error %1: %2").arg(m_number).arg(m_description).toUtf8()) {}

QString RuntimeError::standardDescription(int number) {
    switch (number) {
    case ErrorNumber::InvalidProcedureCall:
        return QStringLiteral("Invalid procedure call or argument");
    case ErrorNumber::Overflow:
        return QStringLiteral("Overflow");
    case ErrorNumber::SubscriptOutOfRange:
        return QStringLiteral("Subscript out of range");
    case ErrorNumber::TypeMismatch:
        return QStringLiteral("Type mismatch");
    case ErrorNumber::BadFileName:
        return QStringLiteral("Bad file name or number");
    case ErrorNumber::FileNotFound:
        return QStringLiteral("File not found");
    case ErrorNumber::DeviceIoError:
        return QStringLiteral("Device I/O error");
    case ErrorNumber::DiskFull:
        return QStringLiteral("Disk full");
    case ErrorNumber::InputPastEndOfFile:
        return QStringLiteral("Input past end of file");
    case ErrorNumber::PermissionDenied:
        return QStringLiteral("Permission denied");
    case ErrorNumber::PathFileAccessError:
        return QStringLiteral("Path/File access error");
    case ErrorNumber::PathNotFound:
        return QStringLiteral("Path not found");
    case ErrorNumber::InvalidPicture:
        return QStringLiteral("Invalid picture");
    default:
        return QStringLiteral("Application-defined or object-defined error");
    }
}

} // namespace tavrel
