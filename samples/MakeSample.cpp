// make-sample FILE: writes the sample database.
#include "samples/Sample.h"
#include <iostream>

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::cerr << "make-sample FILE\n";
        return 2;
    }
    const std::string trouble = MakeSample(argv[1]);
    if (!trouble.empty()) {
        std::cerr << argv[1] << ": " << trouble << "\n";
        return 1;
    }
    std::cout << "Made the sample database " << argv[1] << "\n";
    return 0;
}
