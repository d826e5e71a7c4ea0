// SPDX-License-Identifier: MIT
#pragma once

// Opens the private and protected members of the library's classes to a test. Only for operations
// that cannot be reached through the public interface. The standard headers come first, so that
// they stay as they are.
#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <sstream>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#define private public
#define protected public
#include <morl/morl.h>
#undef private
#undef protected
