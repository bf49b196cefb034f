# Sourced by the scripts that make test media with the ffmpeg CLI. Nothing binary lives in git:
# every file is made on the test machine and checked with ffprobe before a test may trust it.

# fixture_begin OUT FILE...: leaves the script (status 0) when OUT already holds a stamp of the
# checksums of FILE... and of this file; otherwise empties OUT and enters it. fixture_done
# writes the stamp once everything is made and checked.
fixture_begin() {
    local out="$1"
    shift
    fixture_stamp="$out/.complete"
    fixture_sum="$(sha256sum "$@" "${BASH_SOURCE[0]}" | sha256sum | cut -d' ' -f1)"
    if [[ -f "$fixture_stamp" && "$(cat "$fixture_stamp")" == "$fixture_sum" ]]; then
        exit 0
    fi
    rm -rf "$out"
    mkdir -p "$out"
    cd "$out"
    fixture_stamp="$PWD/.complete" # the scripts move on into subfolders
}

fixture_done() {
    echo "$fixture_sum" >"$fixture_stamp"
}

ff() { ffmpeg -nostdin -hide_banner -loglevel error -y "$@"; }
x264=(-c:v libx264 -preset ultrafast -pix_fmt yuv420p)

# Trust nothing unchecked. probe FILE STREAMS ENTRIES prints the first value ffprobe gives;
# check FILE STREAMS ENTRIES VALUE leaves the script when it differs; absent FILE STREAMS leaves
# it when the file has such a stream.
probe() {
    ffprobe -v error -select_streams "$2" -show_entries "$3" -of default=nw=1:nk=1 "$1" | head -1
}
check() {
    local got
    got="$(probe "$1" "$2" "$3")"
    [[ "$got" == "$4" ]] || { echo "fixture $1: $3 of $2 is '$got', expected '$4'" >&2; exit 1; }
}
absent() {
    [[ -z "$(probe "$1" "$2" stream=index)" ]] || { echo "fixture $1 has a stream $2" >&2; exit 1; }
}
