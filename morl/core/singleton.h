// SPDX-License-Identifier: MIT
#pragma once

namespace ns_ruke {

/// Access to the one instance of a process-wide service.
template <class T>
class Singleton {
public:
    /// The instance, never null. It is created at the first call and lives until the process ends,
    /// so it may also be used while static objects are destroyed.
    static T* GetSingletonPtr()
    {
        static T* const instance = new T;
        return instance;
    }
};

}  // namespace ns_ruke
