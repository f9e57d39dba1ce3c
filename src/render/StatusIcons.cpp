#include "render/StatusIcons.h"

#include "base/RuntimeError.h"
#include "base/TextFile.h"

#include <QDir>
#include <QFile>

// The icons live in a static library, whose resource registration the linker would drop unless
// something refers to it; this must sit outside any namespace.
static void registerIconResources() {
    Q_INIT_RESOURCE(icons);
}

namespace tavrel {

namespace {

void ensureResources() {
    static const bool registered = [] {
        registerIconResources();
        return true;
    }();
    Q_UNUSED(registered);
}

void checkBitmap(int bitmap) {
    if (bitmap < StatusIcons::FirstBitmap || bitmap > StatusIcons::LastBitmap)
        throw RuntimeError(ErrorNumber::InvalidProcedureCall);
}

} // namespace

namespace StatusIcons {

int bitmapForValue(QStringView cellValue) {
    struct Entry {
        QLatin1String value;
        int bitmap;
    };
    static constexpr Entry table[] = {
        {QLatin1String("0"), 103}, {QLatin1String("1"), 104}, {QLatin1String("2"), 105},
        {QLatin1String("4"), 106}, {QLatin1String("6"), 107}, {QLatin1String("7"), 108},
        {QLatin1String("8"), 109}, {QLatin1String("9"), 110}, {QLatin1String("10"), 112}};
    for (const Entry &entry : table) {
        if (cellValue == entry.value)
            return entry.bitmap;
    }
    return UnknownBitmap;
}

QString meaning(int bitmap) {
    switch (bitmap) {
    case 103:
        return QStringLiteral("not started");
    case 104:
        return QStringLiteral("ordered");
    case 105:
        return QStringLiteral("acknowledged");
    case 106:
        return QStringLiteral("shipped");
    case 107:
        return QStringLiteral("received");
    case 108:
        return QStringLiteral("installed");
    case 109:
        return QStringLiteral("back-ordered");
    case 110:
        return QStringLiteral("damaged");
    case 111:
        return QStringLiteral("unknown");
    case 112:
        return QStringLiteral("complete");
    default:
        return {};
    }
}

QString resourcePath(int bitmap) {
    checkBitmap(bitmap);
    ensureResources();
    return QStringLiteral(":/status/%1.png").arg(bitmap);
}

QString taxResourcePath() {
    ensureResources();
    return QStringLiteral(":/tax.png");
}

QString iconFileName(int bitmap) {
    checkBitmap(bitmap);
    return QStringLiteral("status%1.png").arg(bitmap);
}

QString writeIconFile(int bitmap, const QString &folder) {
    QFile resource(resourcePath(bitmap));
    if (!resource.open(QIODevice::ReadOnly))
        throw RuntimeError(ErrorNumber::FileNotFound, resource.fileName());
    const QString path = QDir(folder).filePath(iconFileName(bitmap));
    TextFile::writeAtomically(path, resource.readAll());
    return path;
}

} // namespace StatusIcons

} // namespace tavrel
