// One test program per folder: each test class registers itself, and the program's main runs them all.
#pragma once

#include <QObject>
#include <QTest>

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

// What takes a moment may take long on a loaded machine, under a sanitizer above all. Waiting long costs time
// only where the test fails anyway.
#undef QTRY_VERIFY
#undef QTRY_COMPARE
#define QTRY_VERIFY(expression) QTRY_VERIFY_WITH_TIMEOUT((expression), 60'000)
#define QTRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT((actual), (expected), 60'000)
