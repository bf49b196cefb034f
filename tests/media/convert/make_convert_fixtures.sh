#!/usr/bin/env bash
# Makes the sources the converter tests read, with the ffmpeg CLI, heif-enc and the media
# fixtures' byte-level tool, into the folder given first. Nothing binary lives in git. Every
# file is checked with ffprobe before a test may trust it. A stamp carrying this script's
# checksum skips the work when the folder is already complete.
set -euo pipefail

out="${1:?usage: make_convert_fixtures.sh <output folder>}"
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
tools="$here/../fixtures/fixturetools.py"
# shellcheck source=../../support/fixturelib.sh
source "$here/../../support/fixturelib.sh"
fixture_begin "$out" "$here/make_convert_fixtures.sh" "$tools"

# testsrc keeps odd sizes exactly (testsrc2 would round them).
pattern() { echo "testsrc=size=$1:rate=${2:-25}:duration=${3:-2}"; }
tone() { echo "sine=frequency=${1:-440}:sample_rate=48000:duration=${2:-2}"; }

# Movies: 2 s at 320×180, small enough that every test converts in a fraction of a second.
ff -f lavfi -i "$(pattern 320x180)" -f lavfi -i "$(tone)" "${x264[@]}" -c:a aac -ac 2 av.mov
ff -f lavfi -i "$(pattern 320x180)" "${x264[@]}" silent.mp4
# Two sound tracks told apart by their channels: the first is mono, the second stereo.
ff -f lavfi -i "$(pattern 320x180)" -f lavfi -i "$(tone 440)" -f lavfi -i "$(tone 880)" \
    -map 0:v -map 1:a -map 2:a "${x264[@]}" -c:a:0 aac -ac:a:0 1 -c:a:1 pcm_s16le -ac:a:1 2 \
    two_audio.mov
ff -f lavfi -i "$(tone)" -c:a aac audio_only.m4a
# Odd sides: H.264 carries them only in 4:4:4.
ff -f lavfi -i "$(pattern 321x181)" -c:v libx264 -preset ultrafast -pix_fmt yuv444p odd.mov
# Variable rate: ten frames 40 ms apart, then twenty 80 or 120 ms apart (the filter rounds
# the 100 ms steps to its 40 ms clock).
ff -f lavfi -i "$(pattern 320x180 25 1.2)" \
    -vf "setpts='if(lt(N,10),N*0.04,0.4+(N-10)*0.1)/TB'" -fps_mode passthrough \
    -video_track_timescale 1000 "${x264[@]}" vfr.mov
# Full-range YUV (JPEG levels) and RGB sources: the movie is limited-range YUV either way.
ff -f lavfi -i "$(pattern 320x180 25 1)" -c:v mjpeg -pix_fmt yuvj422p -q:v 2 fullrange.mov
ff -f lavfi -i "$(pattern 320x180 25 1)" -c:v png -pix_fmt rgb24 rgb.mov
# Already in the ProRes layout (10-bit 4:2:2): frames go to the encoder without conversion.
ff -f lavfi -i "$(pattern 320x180 25 1)" -c:v prores_ks -profile:v hq -pix_fmt yuv422p10le \
    prores10.mov
# A phone held upright: landscape pixels and a display matrix turning them by 90°.
python3 "$tools" rotate-mov av.mov rotated.mov
# Long enough to cancel in the middle of it.
ff -f lavfi -i "$(pattern 1280x720 25 8)" -f lavfi -i "$(tone 440 8)" "${x264[@]}" -c:a aac long.mov

# Broken sources.
ff -f lavfi -i "$(pattern 320x180)" -f lavfi -i "$(tone)" "${x264[@]}" -c:a aac \
    -movflags +faststart whole.mp4
size=$(stat -c %s whole.mp4)
head -c $((size * 6 / 10)) whole.mp4 >truncated.mp4 # index complete, samples missing
cp whole.mp4 damaged.mp4 # every byte there, but a stretch of the samples zeroed
zeroed=$((size * 4 / 10))
dd if=/dev/zero of=damaged.mp4 bs=1 seek=$((size / 2)) count=$zeroed conv=notrunc status=none
rm whole.mp4
head -c 3000 av.mov >headless.mov # samples only, the index never written
printf 'This is a shopping list, not a movie.\n' >garbage.mov
: >empty.mp4

# Stills.
ff -f lavfi -i "$(pattern 1921x1081 1 1)" -frames:v 1 -pix_fmt rgb24 still_1921x1081.png
ff -f lavfi -i "$(pattern 1920x1080 1 1)" -frames:v 1 -pix_fmt rgb24 still_1920x1080.png
ff -f lavfi -i "$(pattern 1x9 1 1)" -frames:v 1 -pix_fmt rgb24 still_1x9.png
ff -f lavfi -i "$(pattern 33x17 1 1)" -frames:v 1 -pix_fmt rgb24 still_33x17.png
ff -f lavfi -i "$(pattern 65x49 1 1)" -frames:v 1 -pix_fmt rgb48be still16_65x49.png
ff -f lavfi -i "$(pattern 400x300 1 1)" -frames:v 1 -pix_fmt rgb24 heic_source.png
heif-enc -q 90 heic_source.png -o still.heic >/dev/null
printf 'not a picture at all\n%.0s' {1..20} >garbage.png

# Trust nothing unchecked.
check av.mov v:0 stream=width 320
check av.mov v:0 stream=height 180
check av.mov a:0 stream=codec_name aac
check av.mov a:0 stream=channels 2
absent silent.mp4 a
check two_audio.mov a:0 stream=channels 1
check two_audio.mov a:1 stream=channels 2
check two_audio.mov a:1 stream=codec_name pcm_s16le
absent audio_only.m4a v
check odd.mov v:0 stream=width 321
check odd.mov v:0 stream=height 181
check fullrange.mov v:0 stream=pix_fmt yuvj422p
check fullrange.mov v:0 stream=color_range pc
check rgb.mov v:0 stream=pix_fmt rgb24
check prores10.mov v:0 stream=pix_fmt yuv422p10le
check vfr.mov v:0 stream=nb_frames 30
check vfr.mov v:0 stream=duration 2.320000
steps="$(ffprobe -v error -select_streams v -show_entries packet=duration_time -of csv=p=0 vfr.mov |
    sort -u | wc -l)"
((steps >= 3)) || { echo "vfr.mov has a constant frame rate" >&2; exit 1; }
check rotated.mov v:0 stream_side_data=rotation -90
check rotated.mov v:0 stream=width 320
check long.mov v:0 stream=height 720
check still_1921x1081.png v:0 stream=width 1921
check still_1921x1081.png v:0 stream=height 1081
check still_1920x1080.png v:0 stream=width 1920
check still_1x9.png v:0 stream=width 1
check still_1x9.png v:0 stream=height 9
check still_33x17.png v:0 stream=width 33
check still16_65x49.png v:0 stream=pix_fmt rgb48be
heif-info still.heic | grep -q '^image: 400x300 .*primary' ||
    { echo "still.heic is not a 400x300 HEIC file" >&2; exit 1; }
[[ ! -s empty.mp4 ]] || { echo "empty.mp4 is not empty" >&2; exit 1; }
ffprobe -v error truncated.mp4 >/dev/null 2>&1 ||
    { echo "truncated.mp4 lost its index: it must open and fail later" >&2; exit 1; }
# Damaged: the whole file's length, the same first half as the truncated copy, then zeros.
[[ "$(stat -c %s damaged.mp4)" == "$size" ]] && cmp -s -n $((size / 2)) truncated.mp4 damaged.mp4 &&
    [[ -z "$(head -c $((size / 2 + zeroed)) damaged.mp4 | tail -c "$zeroed" | tr -d '\0')" ]] ||
    { echo "damaged.mp4 is not the clip with a zeroed stretch" >&2; exit 1; }
if ffprobe -v error headless.mov >/dev/null 2>&1; then
    echo "headless.mov opens" >&2
    exit 1
fi

fixture_done
