#!/bin/sh
# gnuplot beside pictures.cpp: start FILE.
[ "$1" = start ] || exit 1
gnuplot <<END
set term png size 640,480
set output '$2'
set boxwidth 0.8
set style fill solid
plot '-' with boxes lc rgb 'blue' notitle
$(for i in 0 1 2 3 4 5 6 7 8 9; do echo "$i $((1 + i % 4))"; done)
e
END
