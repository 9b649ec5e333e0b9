# The commands of this project; each installs what it needs first. See README.md.

.PHONY: run demo build test lint bench screenshots package clean

run: build
	build/tarnwick

demo: build
	scripts/install-packages demo
	scripts/demo build/tarnwick

build:
	scripts/install-packages build
	cmake --preset release
	cmake --build --preset release

test:
	scripts/install-packages build test
	cmake --preset test
	cmake --build --preset test
	ctest --preset test

lint:
	scripts/install-packages build test lint
	cmake --preset test
	scripts/lint

bench:
	scripts/install-packages build bench
	cmake --preset bench
	cmake --build --preset bench
	scripts/bench

screenshots:
	scripts/install-packages build test bench
	cmake --preset bench
	cmake --build --preset bench --target tarnwick screenshots symbol-sheet
	build-bench/tools/screenshots docs/images
	build-bench/tools/symbol-sheet docs/images/symbols.png

package: build
	scripts/install-packages package
	scripts/package

clean:
	rm -rf build build-test build-bench tarnwick_*.deb
