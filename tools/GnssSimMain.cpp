#include "tools/SimProgram.h"

#include <iostream>

int main(int argc, char** argv)
{
    return RunSimProgram(std::vector<std::string>(argv + 1, argv + argc), std::cout, std::cerr);
}
