#pragma once

#include <QByteArray>
#include <QString>

// Small helpers shared by every test folder.
namespace testsupport {

// Path of a fixture below tests/data.
QString dataPath(const QString &relative);

// Path below the source tree (for the bundled demo and resources).
QString sourcePath(const QString &relative);

// Folder of the real-world SIF files beside the repository, or an empty string.
QString realWorldSifFolder();

// Copies the bundled demo job into folder, naming the Classic templates of the source tree in
// its job file, and returns the job file's path (empty when a copy failed).
QString copyDemoJob(const QString &folder);

QByteArray readBytes(const QString &path);
void writeBytes(const QString &path, const QByteArray &bytes);

// Compares bytes with the expected file tests/data/<relative>. With TAVREL_UPDATE_GOLDEN=1 in
// the environment the expected file is rewritten instead. On a mismatch the actual bytes are
// written beside the build for inspection and a message with the first differing offset is
// returned; an empty message means equal.
QString compareWithGolden(const QByteArray &actual, const QString &relative);

} // namespace testsupport
