#!/bin/sh
# Stands in for the solver: shows its arguments and leaves a report and a plot file.
echo "fitting $1 in $2 ($3)"
base=$(echo "${1%.*}" | tr "A-Z" "a-z")
mkdir -p output
printf "report of %s\r\n" "$1" > "output/~Quillet.out"
cp "$(dirname "$0")/sample.plt" "output/$base.plt"
echo done
