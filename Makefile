# The commands of this project; each installs what it needs first. See README.md.

.PHONY: run demo build test lint bench bench-build screenshots desktops fuzz torture package clean

# While it compiles: how much of it is done, and since when.
export NINJA_STATUS = [%p, %e s] 

run: build
	build/tarnwick

demo: build
	scripts/install-packages demo
	scripts/demo build/tarnwick $(SERVERS)

build:
	@scripts/install-packages build
	@scripts/compile release

test:
	@scripts/install-packages build test
	@scripts/compile test
	ctest --preset test

lint:
	@scripts/install-packages build test lint
	cmake --preset test --log-level=WARNING
	scripts/lint

bench:
	@scripts/install-packages build bench
	@scripts/compile bench
	scripts/bench

bench-build:
	@scripts/install-packages build test
	scripts/bench-build

screenshots:
	@scripts/install-packages build test bench
	@scripts/compile bench --target tarnwick screenshots symbol-sheet
	build-bench/tools/screenshots docs/images
	build-bench/tools/symbol-sheet docs/images/symbols.png

desktops: build
	@scripts/install-packages demo desktops
	scripts/desktops build/tarnwick docs/images/desktops

SECONDS ?= 60
fuzz:
	@scripts/install-packages build fuzz
	@scripts/compile fuzz
	scripts/fuzz $(SECONDS)

torture:
	@scripts/install-packages build test torture
	@scripts/compile bench --target tarnwick tarnwick_views_module torture faulty-system
	@scripts/compile test --target tst_twoprocesses
	scripts/torture build-bench/tarnwick build-bench/tools
	build-test/tests/store/tst_twoprocesses 60
	scripts/thread-sanitizer

package: build
	@scripts/install-packages package
	scripts/package

clean:
	rm -rf build build-test build-bench build-fuzz build-thread tarnwick_*.deb
