#include "common/TestRegistry.h"

#include <QDir>
#include <QFont>
#include <QStandardPaths>
#ifdef TAVREL_TEST_WIDGETS
#include <QApplication>
#include <QStyle>
#include <QStyleFactory>
#else
#include <QGuiApplication>
#endif
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <cstring>

namespace testregistry {
std::vector<std::pair<const char *, Factory>> &entries() {
    static std::vector<std::pair<const char *, Factory>> list;
    return list;
}
} // namespace testregistry

// Usage: tst_folder [ClassName] [QtTest options...]
// Without a class name every registered class runs; the exit code is the number of failures.
int main(int argc, char **argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir runtimeDir;
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
        QFile::setPermissions(runtimeDir.path(),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtimeDir.path()));
    }
#ifdef TAVREL_TEST_WIDGETS
    QApplication app(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(QFont(QStringLiteral("Liberation Sans"), 9));
    QApplication::setPalette(QApplication::style()->standardPalette());
#else
    QGuiApplication app(argc, argv);
    QGuiApplication::setFont(QFont(QStringLiteral("Liberation Sans"), 9));
#endif

    const char *only = nullptr;
    std::vector<char *> args{argv[0]};
    for (int i = 1; i < argc; ++i) {
        bool isClass = false;
        for (const auto &entry : testregistry::entries())
            isClass = isClass || std::strcmp(entry.first, argv[i]) == 0;
        if (isClass && !only)
            only = argv[i];
        else
            args.push_back(argv[i]);
    }

    int failures = 0;
    for (const auto &[name, factory] : testregistry::entries()) {
        if (only && std::strcmp(name, only) != 0)
            continue;
        std::unique_ptr<QObject> test = factory();
        failures += QTest::qExec(test.get(), int(args.size()), args.data());
    }
    std::printf("%d test classes failed\n", failures);
    return failures;
}
