#!/bin/sh
# pack-archives.sh FOLDER: makes the folder anew, with files below "in" and archives of them, by the system's own tar.
set -eu
out=$1
rm -rf "$out"
mkdir -p "$out/in/sub/deep"
cd "$out/in"
head -c 100000 /dev/zero | tr '\0' a >first.wav
printf end >>first.wav
printf second >sub/second.wav
printf 'third one' >'sub/deep/third é中'
: >empty
for form in gnu oldgnu pax posix ustar; do
    tar --format="$form" -cf "../$form.tar" first.wav sub empty
done
tar -cf ../all.tar first.wav sub empty
mkdir ../notes
printf 'It rains.\n' >../notes/rain.txt
tar -C .. -cf ../notes.tar notes
# Names that lead out of the archive.
(cd sub && tar -P -cf ../../out.tar ../first.wav ./second.wav)
cp ../all.tar sub/nested.tar
tar -cf ../outer.tar first.wav sub empty
rm sub/nested.tar
