# Source this to build by hand: `. tools/setup/env.sh`, then `cmake --preset windows`.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
wine_environment
QORSOUND_QT=$(qt_dir)
export QORSOUND_QT
