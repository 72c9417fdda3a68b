# Convenience front end over CMake. Every target first installs missing Debian packages.
BUILD ?= build
JOBS ?= $(shell nproc)
ARGS ?=
CMAKE_FLAGS ?= -G Ninja -DCMAKE_BUILD_TYPE=Release

export QT_QPA_PLATFORM ?= offscreen

.PHONY: all deps configure build test demo bench clean install

all: build

deps:
	@bash scripts/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD) $(CMAKE_FLAGS) >/dev/null

build: configure
	@cmake --build $(BUILD) -j $(JOBS)

test: build
	@cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

# With a display the gallery opens a window; without one it exports its pages.
demo: configure
	@cmake --build $(BUILD) -j $(JOBS) --target vx_gallery
	@if [ -n "$$DISPLAY$$WAYLAND_DISPLAY" ]; then unset QT_QPA_PLATFORM; fi; ./$(BUILD)/examples/gallery/vx_gallery $(ARGS)

bench: configure
	@cmake --build $(BUILD) -j $(JOBS)
	@for b in $(BUILD)/bench/*; do [ -x "$$b" ] && [ -f "$$b" ] && echo "== $$b" && "$$b" $(ARGS); done; true

install: build
	@cmake --install $(BUILD)

clean:
	@rm -rf $(BUILD)
