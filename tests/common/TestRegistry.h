#pragma once

#include <QObject>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

// Every QtTest class of a folder registers itself here, so that one executable per folder runs
// them all: add TAVREL_TEST(MyTest) after the class and include "MyTest.moc" as usual.
namespace testregistry {

using Factory = std::function<std::unique_ptr<QObject>()>;

std::vector<std::pair<const char *, Factory>> &entries();

struct Registrar {
    Registrar(const char *name, Factory factory) {
        entries().emplace_back(name, std::move(factory));
    }
};

} // namespace testregistry

#define TAVREL_TEST(Class)                                                                         \
    static const testregistry::Registrar registrar_##Class(                                        \
        #Class, [] { return std::unique_ptr<QObject>(new Class); });
