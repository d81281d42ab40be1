Exit Do  ' compile error: 1039
