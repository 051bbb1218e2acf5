#!/usr/bin/env python3
"""Fails when Android.bp and CMakeLists.txt list different plug-in sources."""
import re
import sys

root = sys.argv[1]
cmake = open(f"{root}/CMakeLists.txt").read()
bp = open(f"{root}/Android.bp").read()

cmake_block = re.search(r"set\(STC_SOURCES(.*?)\)", cmake, re.S).group(1)
cmake_sources = set(cmake_block.split())
bp_block = re.search(r"srcs:\s*\[(.*?)\]", bp, re.S).group(1)
bp_sources = set(re.findall(r'"([^"]+)"', bp_block))

if cmake_sources != bp_sources:
    print("only in CMakeLists.txt:", sorted(cmake_sources - bp_sources))
    print("only in Android.bp:", sorted(bp_sources - cmake_sources))
    sys.exit(1)
print(f"Android.bp and CMakeLists.txt list the same {len(bp_sources)} sources")
