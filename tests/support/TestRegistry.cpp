#include "support/TestRegistry.h"

#include <vector>

namespace Vesk::Test
{

std::vector<TestFactory> &registeredTests()
{
    static std::vector<TestFactory> tests;
    return tests;
}

bool registerTest(TestFactory factory)
{
    registeredTests().push_back(factory);
    return true;
}

} // namespace Vesk::Test
