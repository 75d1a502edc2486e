#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "sample_database.h"

namespace {

using ledgix::jet::Generation;

void Write(const std::string& path, const std::vector<std::uint8_t>& content) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "make_seeds FOLDER\n";
        return 2;
    }
    const std::string folder = std::string(argv[1]) + "/";
    Write(folder + "small_jet3.mdb", ledgix::test::BuildSmallDatabase(Generation::kJet3));
    Write(folder + "small_jet4.mdb", ledgix::test::BuildSmallDatabase(Generation::kJet4));
    return 0;
}
