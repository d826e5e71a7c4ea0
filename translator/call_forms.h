// SPDX-License-Identifier: MIT
#pragma once

#include "morl/parser/token.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace ns_ruke {

/// The texts of a call's arguments, in order. A form reads at most this many.
using CallArguments = std::array<std::string, 4>;

/// The forms, other than name and arguments, in which a target writes a call.
enum class CallLayout {
    Plain,       ///< the matrix's constructor over the arguments: M(a0,a1,a2)
    Transposed,  ///< the matrix's constructor over their components: M(V(a0.x,a1.x,a2.x),V(a0.y,...
    Product,     ///< a0*a1, without parentheses of its own
    Saturate     ///< clamp(a0,0.0,1.0)
};

/// How a target writes the calls of one intrinsic.
struct CallForm {
    ENUM_TOKEN token;
    CallLayout layout;
    std::size_t arguments;    ///< how many arguments the form reads, at most 4
    std::string_view matrix;  ///< the name of the matrix type
    std::string_view vector;  ///< the name of the vector type (Transposed)
    std::string_view end;     ///< what closes the call (Plain)

    /// How often the form writes each argument beyond the first time.
    constexpr std::size_t Repeats() const
    {
        return layout == CallLayout::Transposed ? arguments - 1 : 0;
    }
};

/// The forms of one target.
class CallForms {
public:
    template <std::size_t size>
    constexpr explicit CallForms(const CallForm (&rows)[size]) : forms(rows), count(size)
    {
    }

    /// The form of an intrinsic, or null when the target writes it as name and arguments.
    const CallForm* Find(ENUM_TOKEN token) const
    {
        for (std::size_t i = 0; i < count; ++i) {
            if (forms[i].token == token) {
                return &forms[i];
            }
        }
        return nullptr;
    }

private:
    const CallForm* forms;
    std::size_t count;
};

extern const CallForms kHlslCallForms;
extern const CallForms kGlslCallForms;
extern const CallForms kGlslEsCallForms;

/// Appends a call in this form.
void AppendFormedCall(std::string& text, const CallForm& form, const CallArguments& arguments);

}  // namespace ns_ruke
