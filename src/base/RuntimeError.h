#pragma once

#include <QString>

#include <exception>

namespace tavrel {

// The classic BASIC run-time error numbers that the error report shows to the user.
namespace ErrorNumber {
constexpr int InvalidProcedureCall = 5;
constexpr int Overflow = 6;
constexpr int SubscriptOutOfRange = 9;
constexpr int TypeMismatch = 13;
constexpr int BadFileName = 52;
constexpr int FileNotFound = 53;
constexpr int DeviceIoError = 57;
constexpr int DiskFull = 61;
constexpr int InputPastEndOfFile = 62;
constexpr int PermissionDenied = 70;
constexpr int PathFileAccessError = 75;
constexpr int PathNotFound = 76;
constexpr int InvalidPicture = 481;
} // namespace ErrorNumber

// Thrown by low-level code; caught and reported once by the procedure that owns the message.
class RuntimeError : public std::exception {
public:
    explicit RuntimeError(int number, QString description = {});

    int number() const { return m_number; }
    const QString &description() const { return m_description; }
    const char *what() const noexcept override { return m_what.constData(); }

    // The standard description of a run-time error number ("Overflow", "File not found", ...).
    static QString standardDescription(int number);

private:
    int m_number;
    QString m_description;
    QByteArray m_what;
};

} // namespace tavrel
