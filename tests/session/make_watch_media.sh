#!/usr/bin/env bash
# Movies for the watch-folder tests, made by the ffmpeg CLI and checked by ffprobe. big.mov is
# about 300 MB of uncompressed video (cheap to make, heavy to copy), with its index at the end
# as ffmpeg writes it: until the last bytes arrive, no probe can read it.
set -euo pipefail
out="${1:?usage: make_watch_media.sh <folder>}"
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=../support/fixturelib.sh
source "$here/../support/fixturelib.sh"
fixture_begin "$out" "$here/make_watch_media.sh"
ff -f lavfi -i testsrc=size=1920x1080:rate=24 -frames:v 72 -c:v rawvideo -pix_fmt uyvy422 big.mov
ff -f lavfi -i testsrc=size=640x360:rate=24 -frames:v 96 -c:v rawvideo -pix_fmt uyvy422 medium.mov
ff -f lavfi -i testsrc=size=320x240:rate=25:duration=1 "${x264[@]}" one.mov
ff -f lavfi -i testsrc=size=320x240:rate=25:duration=2 -f lavfi -i sine=duration=2 \
    "${x264[@]}" -c:a aac -shortest two.mov
check() { # file, expected duration, expected width
    [[ "$(ffprobe -v error -show_entries format=duration -of csv=p=0 "$1")" == "$2"* ]]
    [[ "$(ffprobe -v error -select_streams v:0 -show_entries stream=width -of csv=p=0 "$1")" == "$3" ]]
}
check big.mov 3.0 1920
check medium.mov 4.0 640
check one.mov 1.0 320
check two.mov 2.0 320
(($(stat -c %s big.mov) > 290000000))
fixture_done
