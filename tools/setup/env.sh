# Source this to build by hand: `. tools/setup/env.sh`, then `cmake --preset windows`.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
wine_environment
QORSOUND_QT=$(qt_dir)
QORSOUND_TOOLS=$(tools_key)
export QORSOUND_QT QORSOUND_TOOLS
