// SPDX-License-Identifier: MIT
#pragma once

#include <morl/morl.h>
#include <string>
#include <utility>
#include <vector>

namespace morl_test {

/// Collects what is logged while it lives, instead of printing it.
class LogCapture {
public:
    struct Message {
        ns_ruke::LogLevel level;
        std::string category;
        std::string text;
    };

    LogCapture()
    {
        previous = ns_ruke::TamberLogSystem::SetSink([this](ns_ruke::LogLevel level,
                                                            const std::string& category,
                                                            const std::string& message) {
            messages.push_back({level, category, message});
            lines.emplace_back(level, message);
            (level == ns_ruke::LogLevel::Error ? errors : infos).push_back(message);
        });
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    ~LogCapture() { ns_ruke::TamberLogSystem::SetSink(std::move(previous)); }

    std::vector<std::string> errors;
    std::vector<std::string> infos;
    std::vector<Message> messages;        ///< all of them, in order
    std::vector<ns_ruke::LogLine> lines;  ///< likewise

private:
    ns_ruke::LogSink previous;
};

}  // namespace morl_test
