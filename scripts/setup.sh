#!/usr/bin/env bash
# Installs the packages listed in scripts/packages.txt that are missing.
# Runs apt-get as root directly, or through sudo otherwise; does nothing when all are present.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
mapfile -t wanted < <(sed -e 's/#.*//' -e 's/[[:space:]]//g' "$here/packages.txt" | grep -v '^$')

missing=()
for pkg in "${wanted[@]}"; do
    status=$(dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null || true)
    [[ "$status" == "install ok installed" ]] || missing+=("$pkg")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "Installing ${#missing[@]} missing package(s): ${missing[*]}"
if [[ $(id -u) -eq 0 ]]; then
    as_root=()
elif command -v sudo >/dev/null 2>&1; then
    as_root=(sudo)
else
    echo "Need root or sudo to install: ${missing[*]}" >&2
    exit 1
fi
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
