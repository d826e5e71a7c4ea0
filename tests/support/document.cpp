// SPDX-License-Identifier: MIT
#include "support/document.h"

#include <stdexcept>

namespace morl_test {

std::filesystem::path Document(const std::string& name)
{
    return std::filesystem::path(MORL_SOURCE_DIR) / "docs" / (name + ".md");
}

std::string TableRow(const std::vector<std::string>& cells)
{
    std::string row = "|";
    for (const std::string& cell : cells) {
        row += " " + cell + " |";
    }
    return row + "\n";
}

void ReplaceTable(std::string& document, const std::string& name, const std::string& table)
{
    const std::string start = "<!-- table: " + name + " -->\n";
    const std::size_t begin = document.find(start);
    const std::size_t end = document.find("<!-- end -->", begin);
    if (begin == std::string::npos || end == std::string::npos) {
        throw std::runtime_error("the document has no place for the table " + name);
    }
    const std::size_t first = begin + start.size();
    document.replace(first, end - first, table);
}

}  // namespace morl_test
