#!/usr/bin/env bash
# trim.sh QTBASE: takes out of Qt's sources what is built and then not used, and what costs time while building.
set -euo pipefail
cd "$1"

# Core and Gui ask for -O3; the compiler takes longer and nothing in the panel becomes faster.
sed -i 's/^\(QMAKE_CFLAGS_OPTIMIZE_FULL *= \)-O3/\1-O2/' mkspecs/common/gcc-base.conf
# One set of makefiles, not a second one for debugging.
sed -i 's/debug_and_release debug_and_release_target //' mkspecs/common/g++-win32.conf

# The host tools are Debian's.
cat >>src/src.pro <<'END'
SUBDIRS -= $$find(SUBDIRS, ^src_tools_)
for(part, SUBDIRS): $${part}.depends -= \
    src_tools_moc src_tools_rcc src_tools_uic src_tools_qlalr src_tools_tracegen src_tools_qvkgen
END
echo 'SUBDIRS = platforms styles imageformats' >>src/plugins/plugins.pro
echo 'SUBDIRS = windows' >>src/plugins/platforms/platforms.pro

# A picture of 64 KB or more is shared out among the threads of a pool to convert its pixels; waking them takes many
# times as long as converting the pictures of a panel.
sed -i 's|int segments = .*/ (1<<16);|int segments = 1;|' src/gui/image/qimage.cpp src/gui/image/qimage_conversions.cpp
