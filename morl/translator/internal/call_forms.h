// SPDX-License-Identifier: MIT
#pragma once

#include "morl/parser/token.h"
#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/text.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace ns_ruke {

/// The texts of a call's arguments, in order. A form reads at most this many.
using CallArguments = std::array<std::string, 4>;

/// How a target can write a call, other than as a name with arguments.
enum class CallLayout {
    Matrix,      ///< the matrix's constructor over the arguments: M(a0,a1,a2)
    Transposed,  ///< the matrix's constructor over their components: M(V(a0.x,a1.x,a2.x),V(a0.y,...
    Product,     ///< a0*a1, without parentheses around it
    Saturate,    ///< clamp(a0,0.0,1.0)
    Sampling     ///< a0.Sample(sampler_a0,a1), or the comparing form of a shadow map
};

/// How a target writes the calls of one intrinsic.
struct CallForm {
    ENUM_TOKEN token;
    CallLayout layout;
    std::size_t arguments;      ///< how many arguments the form always reads, at most 4
    std::size_t repeated;       ///< how many of them, from the first on, it writes more than once
    std::size_t repeats;        ///< how many extra times it writes them
    std::string_view matrix{};  ///< the name of the matrix type (Matrix, Transposed)
    std::string_view vector{};  ///< the name of the vector type (Transposed)
    std::string_view end{};     ///< what closes the call (Matrix)
};

// The rows of a target's table.

constexpr CallForm Matrix(ENUM_TOKEN token, std::size_t size, std::string_view matrix,
                          std::string_view end = ")")
{
    return {token, CallLayout::Matrix, size, 0, 0, matrix, {}, end};
}

constexpr CallForm Transposed(ENUM_TOKEN token, std::size_t size, std::string_view matrix,
                              std::string_view vector)
{
    return {token, CallLayout::Transposed, size, size, size - 1, matrix, vector, {}};
}

constexpr CallForm Product(ENUM_TOKEN token)
{
    return {token, CallLayout::Product, 2, 0, 0};
}

constexpr CallForm Saturate(ENUM_TOKEN token)
{
    return {token, CallLayout::Saturate, 1, 0, 0};
}

constexpr CallForm Sampling(ENUM_TOKEN token)
{
    return {token, CallLayout::Sampling, 2, 1, 1};
}

/// The forms of one target.
class CallForms {
public:
    /// @param rows must outlive this view of them.
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

/// Appends a call in the form Transposed.
void AppendTransposed(Text& text, const CallForm& form, const CallArguments& arguments);

/// Appends a call in the form Sampling.
/// @param arguments the form's arguments, and for a shadow map the value to compare with.
void AppendSampling(Text& text, const CallArguments& arguments);

/// What precedes the name of a texture object in that of its sampler state.
constexpr std::string_view kSamplerState = "sampler_";

}  // namespace ns_ruke
