# One scan from the output of a tool to a cleaned file, on the real programs. To be sourced after
# screen.sh.

example=examples/scan.regenie.gz

# Checked, prepared, drawn and listed. Begins the folder of the results.
prepareExample() {
    tools=$root/build/release/bin/pelmark-tools
    out="$root/out/demo"
    rm -rf "$out" && mkdir -p "$out"
    cp "$root"/examples/*.txt "$root/$example" "$out"
    cd "$out"
    # Status 1 is the answer: the window does not open this file.
    "$tools" check scan.regenie.gz >check.txt || [[ $? -eq 1 ]]
    "$tools" prepare scan.regenie.gz -o scan.txt
    "$tools" plot scan.txt --label-hits --quiet -o scan.png
    "$tools" hits scan.txt --quiet -o hits.tsv
}

reportTools() {
    cat <<END

The window does not open $example, the output of another program. pelmark-tools has
worked on it, and the results are in

    $out

    check.txt               check: why the window refuses it
    scan.txt                prepare: the table that the window opens
    scan.png                plot: the scan, with the names of its strongest markers
    hits.tsv                hits: the $(tail -n +2 "$out/hits.tsv" | wc -l) lead markers, and what surrounds each
END
}

# As the guide does it.
cutInTheWindow() {
    mkdir pictures
    play "$root/build/release/bin/pelmark_driven" "$scratch" <"$root/scripts/lib/scenarios/cleaning"
    "$tools" drop scan.regenie.gz chr12_cut.txt --quiet -o cleaned.regenie
}

reportWindow() {
    cat <<END

    pictures/chr12*.png     the window, as a lone marker is found, marked and cut
    chr12_cut.txt           what was cut: $(tail -n +2 "$out/chr12_cut.txt" | wc -l) marker
    chr12_cut.png           its plot
    cleaned.regenie         drop: the original file without it, $(tail -n +2 "$out/cleaned.regenie" | wc -l) markers
    Pelmark_log.txt         what the window wrote to its log
END
}

# Whatever happens: the results so far, nothing left running, no scratch folder.
endDemo() {
    local status=$?
    if [[ $status -ne 0 ]]; then
        echo "The demonstration did not come to its end. What there is of it: $out" >&2
    fi
    stopScreen
    rm -rf "$scratch"
    exit "$status"
}

demo() {
    scratch=$(mktemp -d)
    trap endDemo EXIT
    prepareExample
    startScreen 1280x1024 "$scratch"
    cutInTheWindow
    reportTools
    reportWindow
}
