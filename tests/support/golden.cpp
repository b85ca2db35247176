#include "tests/support/golden.h"

#include <fstream>
#include <stdexcept>

namespace nurvex7::testing_support {

Golden read_golden(const std::string& name) {
    std::ifstream in(std::string(NURVEX_TESTS_DIR) + "/golden/" + name + ".txt");
    if (!in) {
        throw std::runtime_error("no golden drawing " + name);
    }
    Golden golden;
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("graph ", 0) == 0) {
            golden.graph += line.substr(5);
        } else if (line.rfind("update ", 0) == 0) {
            golden.updates.push_back(line.substr(6));
        } else {
            golden.drawing += line + "\n";
        }
    }
    return golden;
}

} // namespace nurvex7::testing_support
