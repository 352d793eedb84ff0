// Plays the inputs that were found worth keeping, and the beginnings of each: one a line, in hexadecimal
// digits.
//
//   fuzz_replay TARGET FILE
#include "fuzz_targets.h"

#include <fstream>
#include <iostream>
#include <vector>

int main(int count, char** arguments) {
    if (count != 3)
        return 2;
    std::ifstream file(arguments[2]);
    int inputs = 0;
    for (std::string line; std::getline(file, line); ++inputs) {
        std::vector<std::uint8_t> bytes;
        for (std::size_t i = 0; i + 1 < line.size(); i += 2)
            bytes.push_back(static_cast<std::uint8_t>(std::stoi(line.substr(i, 2), nullptr, 16)));
        for (std::size_t size = 0; size <= bytes.size(); ++size)
            kova::test::fuzzTargets().at(arguments[1])({bytes.data(), size});
    }
    std::cout << inputs << " inputs\n";
    return inputs > 0 ? 0 : 1;
}
