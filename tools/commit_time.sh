# Sets SOURCE_DATE_EPOCH to the time of the commit, where it is not set: every time in what is packed is that one, so that it
# is the same to the byte wherever and whenever it is made. Sourced at the project's top by what makes packages.
if [ -z "${SOURCE_DATE_EPOCH:-}" ]; then
  # A source archive has no history, it has the time in a file.
  SOURCE_DATE_EPOCH=$(sed -n 's/^time //p' cmake/commit.txt)
  case $SOURCE_DATE_EPOCH in *[!0-9]*) SOURCE_DATE_EPOCH=$(git log -1 --format=%ct) ;; esac
fi
export SOURCE_DATE_EPOCH
