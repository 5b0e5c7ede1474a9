#!/bin/sh
# The compiler of Qt, under the names x86_64-w64-mingw32-clang and -clang++: clang compiles, in half of gcc's time,
# against gcc's headers; gcc links. QT_GCC_HEADERS is gcc's folder of C++ headers.
# thread_local is emulated as gcc does it, so that objects of both compilers share such variables.
for argument; do
    case $argument in
    -c | -E | -M | -MM | -x | --version | -dumpmachine | -dM)
        case $0 in
        *++)
            exec clang++ --target=x86_64-w64-mingw32 -femulated-tls -Qunused-arguments -nostdlibinc -nostdinc++ \
                -isystem "$QT_GCC_HEADERS" -isystem "$QT_GCC_HEADERS/x86_64-w64-mingw32" \
                -isystem "$QT_GCC_HEADERS/backward" "$@" -isystem /usr/x86_64-w64-mingw32/include
            ;;
        esac
        exec clang --target=x86_64-w64-mingw32 -femulated-tls -Qunused-arguments -nostdlibinc "$@" \
            -isystem /usr/x86_64-w64-mingw32/include
        ;;
    esac
done
case $0 in
*++) exec x86_64-w64-mingw32-g++-posix "$@" ;;
esac
exec x86_64-w64-mingw32-gcc-posix "$@"
