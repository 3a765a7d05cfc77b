#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Draws docs/images/demo.svg, a picture of a terminal, from the output of tools/demo.sh.
. "$(dirname "$0")/lib.sh"

tools/demo.sh >build/demo.log
{ echo "$ tools/demo.sh"; cat build/demo.log; } | sed 's/&/\&amp;/g; s/</\&lt;/g; s/>/\&gt;/g' | awk '
    { lines[NR] = $0; if (length($0) > columns) columns = length($0) }
    END {
        width = columns * 7.85 + 32; height = NR * 18 + 24
        printf "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %d %d\" width=\"%d\">\n", width, height, width
        print "<rect width=\"100%\" height=\"100%\" rx=\"8\" fill=\"#161b22\" stroke=\"#8c959f\"/>"
        print "<g fill=\"#e6edf3\" font-family=\"monospace\" font-size=\"13\" xml:space=\"preserve\">"
        for (i = 1; i <= NR; ++i)
            printf "<text x=\"16\" y=\"%d\" textLength=\"%.1f\">%s</text>\n", i * 18 + 16, length(lines[i]) * 7.85, lines[i]
        print "</g></svg>"
    }' >docs/images/demo.svg
