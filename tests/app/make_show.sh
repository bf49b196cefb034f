#!/usr/bin/env bash
# A small show folder for the command-line tests, made by the ffmpeg CLI and checked by ffprobe.
set -euo pipefail
out="${1:?usage: make_show.sh <folder>}"
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=../support/fixturelib.sh
source "$here/../support/fixturelib.sh"
fixture_begin "$out" "$here/make_show.sh"
mkdir -p show/sub
cd show
ff -f lavfi -i testsrc=size=1920x1080:rate=25:duration=1 -c:v libx264 -preset ultrafast \
    -pix_fmt yuv420p "Opening.mov"
ff -f lavfi -i testsrc=size=1920x1080:rate=25:duration=1 -f lavfi -i sine=duration=1 \
    -c:v libx264 -preset ultrafast -pix_fmt yuv420p -c:a aac -shortest "sub/Band Intro.MP4"
ff -f lavfi -i testsrc=size=1280x720 -frames:v 1 "logo.png"
echo "this is not a movie" > "notes.mov"
for f in Opening.mov "sub/Band Intro.MP4"; do
    [[ "$(ffprobe -v error -select_streams v:0 -show_entries stream=width -of csv=p=0 "$f")" == 1920 ]]
done
fixture_done
