# make demo    everything from a fresh clone to the main job, shown step by step
# make test    set up, build, run all tests
# make build   both bitnesses: build/x86/bin and build/x64/bin
# make soak    long runs: hostile bytes by the million, servers killed under clients (SOAK_MINUTES, default 10)
# make bench   measures everything (docs/benchmarks.md); make format and make lint keep the sources in order
SHELL := /bin/bash
.DEFAULT_GOAL := build

.PHONY: setup build test demo soak bench format lint clean

setup:
	@scripts/setup.sh

build: setup
	@scripts/build.sh

test: build
	@scripts/test.sh

demo: build
	@scripts/demo.sh

format:
	@scripts/format.sh

lint: setup
	@scripts/lint.sh

soak: build
	@scripts/soak.sh

bench: build
	@scripts/bench.sh

clean:
	rm -rf build/x86 build/x64
