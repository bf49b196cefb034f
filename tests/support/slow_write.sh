#!/usr/bin/env bash
# slow_write.sh SRC DST [MIB_PER_SECOND]: copies SRC to DST the way a copy over the network
# arrives: through one descriptor, opened once (creating the folders on the way, truncating an
# older file), 4 MiB at a time at about the given rate, and closed once at the end. Each chunk
# waits for its due time, so a busy machine slows the copy down but never speeds it up.
set -euo pipefail
src="$1" dst="$2" rate="${3:-20}"
chunk=4
size=$(stat -c %s "$src")
mkdir -p "$(dirname "$dst")"
start=${EPOCHREALTIME/./}
exec 3>"$dst"
for ((i = 0; i * chunk * 1048576 < size; i++)); do
    dd if="$src" bs=${chunk}M skip=$i count=1 status=none >&3
    due=$((start + (i + 1) * chunk * 1000000 / rate))
    now=${EPOCHREALTIME/./}
    if ((due > now)); then
        sleep "$(((due - now) / 1000000)).$(printf '%06d' $(((due - now) % 1000000)))"
    fi
done
exec 3>&-
