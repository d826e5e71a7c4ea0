// SPDX-License-Identifier: MIT
// An engine that loads plug-ins, all with global visibility, and uses each of them.
//
//     engine ROUNDS THREAD PLUGIN...
//
// In every round it loads and starts all, runs all, and ends and unloads all. THREAD, which runs
// them, is "main" or "other". Prints what the plug-ins return, how many of them are still loaded in
// the end, and whether the later half of the rounds has used up memory.
#include <dlfcn.h>
#include <malloc.h>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

std::vector<void*> Load(const std::vector<std::string>& plugins)
{
    std::vector<void*> handles;
    for (const std::string& plugin : plugins) {
        void* const handle = dlopen(plugin.c_str(), RTLD_NOW | RTLD_GLOBAL);
        if (handle == nullptr) {
            std::cerr << dlerror() << "\n";
            std::exit(1);
        }
        handles.push_back(handle);
    }
    return handles;
}

template <class Function>
Function* Find(void* plugin, const char* name)
{
    return reinterpret_cast<Function*>(dlsym(plugin, name));
}

int RunAll(const std::vector<void*>& plugins)
{
    for (void* const plugin : plugins) {
        Find<void()>(plugin, "start_plugin")();
    }
    int heard = 0;
    for (void* const plugin : plugins) {
        heard += Find<int()>(plugin, "run_plugin")();
    }
    for (void* const plugin : plugins) {
        Find<void()>(plugin, "end_plugin")();
    }
    return heard;
}

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const int rounds = std::stoi(arguments.at(0));
    const std::vector<std::string> plugins(arguments.begin() + 2, arguments.end());
    std::size_t early = 0;
    int heard = 0;
    for (int round = 0; round < rounds; ++round) {
        const std::vector<void*> handles = Load(plugins);
        if (arguments[1] == "main") {
            heard += RunAll(handles);
        } else {
            std::thread([&] { heard += RunAll(handles); }).join();
        }
        for (void* const handle : handles) {
            dlclose(handle);
        }
        early = round == rounds / 2 ? mallinfo2().uordblks : early;
    }
    const std::size_t late = mallinfo2().uordblks;
    int loaded = 0;
    for (const std::string& plugin : plugins) {
        loaded += dlopen(plugin.c_str(), RTLD_NOW | RTLD_NOLOAD) != nullptr ? 1 : 0;
    }
    std::cout << heard << " faults heard, " << loaded << " still loaded, "
              << (late > early ? "memory has grown" : "no memory lost") << "\n";
}
