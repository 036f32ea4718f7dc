// What nearly every test includes, beside pch.h.
#pragma once
#include "pch.h"

#include <QtTest>

#include <rapidcheck.h>
