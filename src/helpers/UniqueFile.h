// Owner of a C stream.
#pragma once

#include <cstdio>
#include <memory>

struct FileCloser {
    void operator()(FILE *file) const noexcept { std::fclose(file); }
};
using UniqueFile = std::unique_ptr<FILE, FileCloser>;
