// Stands in for another program: writes its arguments, one a line, to a file beside it with ".txt" after its
// name.
#include <cstdio>
#include <string>

int main(int argc, char **argv) {
    std::FILE *file = std::fopen((std::string(_pgmptr) + ".txt").c_str(), "w");
    if (!file)
        return 1;
    for (int i = 1; i < argc; ++i)
        std::fprintf(file, "%s\n", argv[i]);
    return std::fclose(file);
}
