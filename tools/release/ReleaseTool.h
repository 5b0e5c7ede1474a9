// The maker's commands around a release; see --help.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <vector>

// The process's exit code: 0 done, 1 a file is wrong, 2 the command line is wrong.
int runReleaseTool(const std::vector<std::filesystem::path> &arguments, std::ostream &out,
                   std::ostream &errors);
