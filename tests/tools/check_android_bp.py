#!/usr/bin/env python3
"""Fails when Android.bp and CMakeLists.txt list different plug-in sources, or when Android.bp
lacks a flag that the plug-in's results or warnings depend on."""
import re
import sys

root = sys.argv[1]
cmake = open(f"{root}/CMakeLists.txt").read()
bp = open(f"{root}/Android.bp").read()

cmake_block = re.search(r"set\(STC_SOURCES(.*?)\)", cmake, re.S).group(1)
cmake_sources = set(cmake_block.split())
bp_block = re.search(r"srcs:\s*\[(.*?)\]", bp, re.S).group(1)
bp_sources = set(re.findall(r'"([^"]+)"', bp_block))

status = 0
if cmake_sources != bp_sources:
    print("only in CMakeLists.txt:", sorted(cmake_sources - bp_sources))
    print("only in Android.bp:", sorted(bp_sources - cmake_sources))
    status = 1

cmake_warnings = set(re.search(r"set\(STC_WARNINGS(.*?)\)", cmake, re.S).group(1).split())
bp_cflags = set(re.findall(r'"([^"]+)"', re.search(r"cflags:\s*\[(.*?)\]", bp, re.S).group(1)))
for flag in sorted(cmake_warnings | {"-ffp-contract=off", "-fvisibility=hidden"}):
    if flag not in bp_cflags:
        print(f"Android.bp cflags lack {flag}")
        status = 1
if "add_compile_options(-ffp-contract=off)" not in cmake:
    print("CMakeLists.txt does not build with -ffp-contract=off")
    status = 1

if status == 0:
    print(f"Android.bp and CMakeLists.txt agree on {len(bp_sources)} sources and the flags")
sys.exit(status)
