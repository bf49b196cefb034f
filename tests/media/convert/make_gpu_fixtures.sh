#!/usr/bin/env bash
# Makes the sources of the transparency and HAP tests with the ffmpeg CLI, heif-enc and the
# media fixtures' byte-level tool, into the folder given first. Every file is checked with ffprobe before a test
# may trust it; a stamp of this script's checksum skips the work when the folder is complete.
set -euo pipefail

out="${1:?usage: make_gpu_fixtures.sh <output folder>}"
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
tools="$here/../fixtures/fixturetools.py"
# shellcheck source=../../support/fixturelib.sh
source "$here/../../support/fixturelib.sh"
fixture_begin "$out" "$here/make_gpu_fixtures.sh" "$tools"

# One second at 25 fps, 128×72: the left half transparent, the right half opaque. The mask's
# edge sits on a 4-pixel block boundary so that DXT textures keep it sharp.
picture="testsrc=size=128x72:rate=25:duration=1"
mask="color=black:size=128x72:rate=25:duration=1,drawbox=x=64:y=0:w=64:h=72:color=white:t=fill"
halfclear() { ff -f lavfi -i "$picture" -f lavfi -i "$mask" \
    -filter_complex "[1:v]format=gray[m];[0:v][m]alphamerge,format=$1" "${@:2}"; }

halfclear yuva444p10le -c:v prores_ks -profile:v 4444 alpha_prores.mov
halfclear rgba -c:v hap -format hap_alpha alpha_hap.mov
halfclear argb -c:v qtrle alpha_qtrle.mov
halfclear yuva420p -c:v libvpx-vp9 -b:v 200k -deadline realtime alpha_vp9.webm
halfclear yuva420p -c:v libvpx -auto-alt-ref 0 -b:v 200k -deadline realtime alpha_vp8.webm
halfclear rgba -frames:v 1 alpha.png
halfclear rgba -frames:v 1 -c:v tiff alpha.tiff
halfclear yuva420p -frames:v 1 -c:v libwebp -lossless 1 alpha.webp
heif-enc -q 90 alpha.png -o alpha.heic >/dev/null
# Alpha channels that are there but opaque everywhere, and pictures without any.
ff -f lavfi -i "$picture" -frames:v 1 -pix_fmt rgba opaque_rgba.png
ff -f lavfi -i "$picture" -frames:v 1 -pix_fmt rgb24 opaque.png
ff -f lavfi -i "$picture" -c:v libx264 -preset ultrafast -pix_fmt yuv420p h264.mp4
ff -f lavfi -i "$picture" -c:v prores_ks -profile:v standard -pix_fmt yuv422p10le prores422.mov
ff -f lavfi -i "$picture" -c:v prores_ks -profile:v 4444 -pix_fmt yuv444p10le opaque4444.mov
# Sides that are not multiples of 4 (326×182 becomes 324×180), with sound, turned by 90°.
ff -f lavfi -i "testsrc=size=326x182:rate=25:duration=1" \
    -f lavfi -i "sine=frequency=440:sample_rate=48000:duration=1" \
    "${x264[@]}" -c:a aac -ac 2 flat_326x182.mov
python3 "$tools" rotate-mov flat_326x182.mov turned_326x182.mov
rm flat_326x182.mov
# Smaller than one texture block after cropping.
ff -f lavfi -i "testsrc=size=3x3:rate=25:duration=1" -c:v png -pix_fmt rgb24 tiny_3x3.mov

check alpha_prores.mov v:0 stream=codec_tag_string ap4h
check alpha_prores.mov v:0 stream=pix_fmt yuva444p12le
check alpha_hap.mov v:0 stream=codec_tag_string Hap5
check alpha_qtrle.mov v:0 stream=pix_fmt argb
check alpha_vp9.webm v:0 stream_tags=alpha_mode 1
check alpha_vp8.webm v:0 stream_tags=alpha_mode 1
check alpha.png v:0 stream=pix_fmt rgba
check alpha.tiff v:0 stream=pix_fmt rgba
heif-info alpha.heic | grep -q 'alpha channel: yes' ||
    { echo "alpha.heic has no alpha channel" >&2; exit 1; }
check opaque_rgba.png v:0 stream=pix_fmt rgba
check opaque.png v:0 stream=pix_fmt rgb24
check h264.mp4 v:0 stream=pix_fmt yuv420p
check prores422.mov v:0 stream=codec_tag_string apcn
check opaque4444.mov v:0 stream=pix_fmt yuv444p12le
check turned_326x182.mov v:0 stream=width 326
check turned_326x182.mov v:0 stream_side_data=rotation -90
check turned_326x182.mov a:0 stream=codec_name aac
check tiny_3x3.mov v:0 stream=width 3
# The alpha planes really are clear on the left and solid on the right.
[[ "$(ffmpeg -v error -i alpha_prores.mov -vf alphaextract,format=gray -frames:v 1 -f rawvideo - |
    od -An -tu1 -w128 -v | awk 'NR==36 {print $10, $120}')" == "0 255" ]] ||
    { echo "alpha_prores.mov is not clear on the left, solid on the right" >&2; exit 1; }

fixture_done
