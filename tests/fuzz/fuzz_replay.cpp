// Plays the inputs that were found worth keeping, and the beginnings of each: one a line, in hexadecimal
// digits.
//
//   fuzz_replay TARGET FILE
//   fuzz_replay --unpack FILE FOLDER     one file an input, for the search
#include "fuzz_targets.h"

#include <fstream>
#include <iostream>
#include <vector>

int main(int count, char** arguments) {
    const std::vector<std::string> words(arguments + 1, arguments + count);
    const bool unpacks = words.size() == 3 && words[0] == "--unpack";
    if (!unpacks && words.size() != 2)
        return 2;
    std::ifstream file(words[1]);
    int inputs = 0;
    for (std::string line; std::getline(file, line); ++inputs) {
        std::vector<std::uint8_t> bytes;
        for (std::size_t i = 0; i + 1 < line.size(); i += 2)
            bytes.push_back(static_cast<std::uint8_t>(std::stoi(line.substr(i, 2), nullptr, 16)));
        if (unpacks) {
            std::ofstream(words[2] + '/' + std::to_string(inputs), std::ios::binary)
                .write(reinterpret_cast<const char*>(bytes.data()),
                       static_cast<std::streamsize>(bytes.size()));
            continue;
        }
        for (std::size_t size = 0; size <= bytes.size(); ++size)
            kova::test::fuzzTargets().at(words[0])({bytes.data(), size});
    }
    std::cout << inputs << " inputs\n";
    return inputs > 0 ? 0 : 1;
}
