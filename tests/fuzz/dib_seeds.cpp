// Writes a small bitmap file of every variant into a folder, for the fuzzer to start from.
#include <cstdio>
#include <fstream>

#include "tests/bitmap/bmp_files.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: dib_seeds FOLDER\n", stderr);
        return 2;
    }
    for (const varnel::test::BmpVariant& variant : varnel::test::BmpVariants()) {
        const std::vector<varnel::BYTE> bytes = varnel::test::MakeBmp(variant, 9, 7).bytes;
        std::ofstream file(std::string(argv[1]) + "/" + variant.name, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        if (!file) return 1;
    }
    return 0;
}
