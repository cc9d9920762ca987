# The main job from open to save, done by hand on the real program. To be sourced after screen.sh.
# The places below are pixels of the window on a screen of demoScreen; the plot fills its upper part.

demoScreen=1280x1024

# A folder outside the project in which the program can work as it would in examples/ and leave its log behind.
enterWorkFolder() {
    mkdir "$scratch/files"
    ln -s "$root"/examples/*.txt "$scratch/files"
    cd "$scratch/files"
}

startProgram() {
    # Qt's own dialogs and look, and nothing remembered, whatever this machine prefers.
    env --unset=QT_QPA_PLATFORMTHEME --unset=QT_STYLE_OVERRIDE --unset=QT_SCALE_FACTOR \
        QT_QPA_PLATFORM=xcb LC_ALL=C.UTF-8 \
        XDG_CONFIG_HOME="$scratch/config" XDG_RUNTIME_DIR="$scratch" \
        "$root/build/release/bin/pelmark" 2>"$scratch/messages" &
    program=$!
}

logSays() {
    grep --quiet "$1" Pelmark_log.txt
}

isOver() {
    ! kill -0 "$program" 2>/dev/null
}

# box PICTURE X1 Y1 X2 Y2: draws a box, takes its picture while the button is down, and lets go.
box() {
    drag "${@:2}"
    takePicture "$out/$1"
    drop
    # Off the window: a mouse at rest over the plot brings up its tool tip.
    xdotool mousemove 1270 1010
}

openGenome() {
    enterWindow '^Welcome to  PELMARK'
    takePicture "$out/01-choose-a-file.png"
    xdotool type --delay 5 genome_100k.txt
    xdotool key Return
    enterWindow '^PELMARK'
    takePicture "$out/02-genome.png"
    logSays '^Get GLOBAL$'
}

pickChromosome() {
    box 03-box-on-a-chromosome.png 715 300 745 420
    waitFor "a chromosome to be picked" logSays '^selected chromosome by getManhattan '
    takePicture "$out/04-chromosome.png"
}

# It stands far above its neighbours, which is what a marker that was measured badly does.
removeLoneMarker() {
    box 05-box-on-a-lone-marker.png 40 30 110 90
    takePicture "$out/06-lone-marker.png"
    xdotool key alt+r
    takePicture "$out/07-lone-marker-removed.png"
}

lookAtPeak() {
    box 08-box-on-a-peak.png 840 40 960 700
    takePicture "$out/09-peak.png"
    xdotool key alt+u
    takePicture "$out/10-unzoomed.png"
}

saveTable() {
    xdotool key alt+s
    enterWindow '^Enter new filename$'
    takePicture "$out/11-name-the-table.png"
    xdotool type --delay 5 cleaned
    xdotool key Return
    waitFor "the saved table" test -s cleaned.txt
    waitFor "the saved picture" test -s cleaned.png
}

leave() {
    enterWindow '^PELMARK'
    xdotool key alt+e
    waitFor "the end of the program" isOver
    wait "$program"
}

workTheProgram() {
    startProgram
    openGenome
    pickChromosome
    removeLoneMarker
    lookAtPeak
    saveTable
    leave
}

keepResults() {
    local file
    for file in cleaned.txt cleaned.png Pelmark_log.txt; do
        if [[ -e "$scratch/files/$file" ]]; then
            mv "$scratch/files/$file" "$out"
        fi
    done
}

report() {
    cat <<END

Pelmark was worked from open to save on examples/genome_100k.txt. The results are in

    $out

    01-*.png ... 11-*.png   the window at each step
    cleaned.txt             the saved table: $(tail -n +2 "$out/cleaned.txt" | wc -l) markers, one removed
    cleaned.png             the plot that was saved with it
    Pelmark_log.txt         what the program wrote to its log
END
}

# Whatever happens: the results so far, nothing left running, no scratch folder.
endDemo() {
    local status=$?
    if [[ $status -ne 0 ]]; then
        import -window root "$out/screen-at-the-end.png" 2>/dev/null || true
        cat "$scratch/messages" >&2 || true
        echo "The demonstration did not come to its end. What there is of it: $out" >&2
    fi
    kill "$program" 2>/dev/null || true
    stopScreen
    keepResults
    rm -rf "$scratch"
    exit "$status"
}

demo() {
    out="$root/out/demo"
    scratch=$(mktemp -d)
    screenProcess='' program=''
    trap endDemo EXIT
    rm -rf "$out" && mkdir -p "$out"
    startScreen "$demoScreen" "$scratch"
    enterWorkFolder
    workTheProgram
    keepResults
    report
}
