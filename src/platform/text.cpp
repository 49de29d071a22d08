// placeholder written by the posix engineer
