#!/usr/bin/env bash
# Sets the machine up, once: Debian packages, Qt for Windows, the Wine prefix.
set -euo pipefail
for step in packages qt wine; do
    "$(dirname "$0")/$step.sh"
done
