// One test program per folder: each test class registers itself, and the program's main runs them all.
#pragma once

#include <QObject>

#include <memory>

namespace Vesk::Test
{

using TestFactory = std::unique_ptr<QObject> (*)();

/** Called before main by VESK_TEST. */
bool registerTest(TestFactory factory);

} // namespace Vesk::Test

/** Puts a QObject with test slots into the folder's test program. */
#define VESK_TEST(TestClass)                                                                                 \
    static const bool registered##TestClass = Vesk::Test::registerTest(                                      \
        []() -> std::unique_ptr<QObject> { return std::make_unique<TestClass>(); });
