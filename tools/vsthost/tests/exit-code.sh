#!/bin/sh
# Runs a command and prints its exit code last, so that a test can match its
# output and how it ended at once.
"$@"
echo "exit code $?"
