# shellcheck shell=bash
# The kernel of the guests: Debian's own, fetched once and kept. Sourced by tests/guest/guest.

# What a guest needs of it. It is not installed.
kernel_parts=(
  './boot/vmlinuz-*' './lib/modules/*/modules.*'
  './lib/modules/*/kernel/fs/9p/*' './lib/modules/*/kernel/fs/fscache/*' './lib/modules/*/kernel/fs/netfs/*'
  './lib/modules/*/kernel/fs/overlayfs/*' './lib/modules/*/kernel/fs/configfs/*' './lib/modules/*/kernel/net/9p/*'
  './lib/modules/*/kernel/drivers/'{virtio,char,hid,input,usb}'/*'
)

# The package of the newest kernel that apt knows.
kernel_package() {
  apt-cache depends linux-image-amd64 2>/dev/null | sed -n 's/.*Depends: \(linux-image-[0-9].*\)/\1/p' | head -1
}

# fetch_kernel FOLDER: puts the package into the folder. What apt knows may be old, or nothing.
fetch_kernel() {
  local package attempt
  for attempt in first second; do
    package=$(kernel_package)
    if [ -n "$package" ] && (cd "$1" && apt-get -qq download "$package") >"$1/fetch.log" 2>&1; then return 0; fi
    if [ "$attempt$(id -u)" != first0 ] || ! apt-get -qq update >"$1/fetch.log" 2>&1; then break; fi
  done
  cat "$1/fetch.log" >&2
  echo "guest: the kernel cannot be fetched. Is there a network, and has \"apt-get update\" run lately?" >&2
  return 1
}

# unpack_kernel VMLINUZ VMLINUX: the kernel itself out of its self-extracting image, for which an emulated processor
# would take seconds. The offsets are those of the x86 boot protocol (Documentation/x86/boot.rst of the kernel).
unpack_kernel() {
  /usr/bin/python3 - "$1" "$2" <<'PYTHON'
import lzma
import struct
import sys

image = open(sys.argv[1], "rb").read()
setup_sectors = image[0x1F1] or 4
offset, length = struct.unpack_from("<II", image, 0x248)
start = (setup_sectors + 1) * 512 + offset
kernel = lzma.LZMADecompressor().decompress(image[start:start + length])
if kernel[:4] != b"\x7fELF":
    sys.exit("the kernel holds no ELF file")
open(sys.argv[2], "wb").write(kernel)
PYTHON
}

# Fills the folder with the kernel and its modules.
make_kernel() {
  local folder=$1 version
  echo "fetching the kernel of the guests, about 70 MB, once" >&2
  fetch_kernel "$folder" || return
  dpkg-deb --fsys-tarfile "$folder"/linux-image-*.deb |
    tar -x -C "$folder" --wildcards "${kernel_parts[@]}" 2>/dev/null || true # Not each part is in each kernel.
  version=$(ls "$folder/lib/modules") && depmod -b "$folder" "$version" &&
    unpack_kernel "$folder/boot/vmlinuz-$version" "$folder/vmlinux" || return
  rm -r "$folder"/linux-image-*.deb "${folder:?}"/{boot,fetch.log}
  printf '%s\n' "${kernel_parts[@]}" >"$folder/parts"
  chmod -R a+rX "$folder"
}

# Whether the folder holds a kernel with all the parts.
has_kernel() {
  printf '%s\n' "${kernel_parts[@]}" | cmp -s - "$1/parts"
}

# prepare_kernel FOLDER: afterwards the folder holds vmlinux and lib/modules. A complete one is left as it is.
prepare_kernel() {
  local folder=$1 new
  ! has_kernel "$folder" || return 0
  mkdir -p "$(dirname "$folder")" && new=$(mktemp -d "$folder.XXXXXX") || return
  if make_kernel "$new" && ! has_kernel "$folder"; then
    rm -rf "$folder"
    # Another guest may have been quicker.
    mv -T "$new" "$folder" 2>/dev/null || true
  fi
  rm -rf "$new"
  has_kernel "$folder"
}

# pack_initramfs KERNEL SCRIPT FILE: an initramfs that runs the script, with busybox and the modules that it takes to
# mount the root file system.
pack_initramfs() {
  local kernel=$1 script=$2 file=$3 module root version
  root=$(mktemp -d "$file.XXXXXX") && version=$(ls "$kernel/lib/modules") || return
  mkdir -p "$root"/{modules,proc,host,memory,root}
  cp "$(command -v busybox)" "$root/" && install -m 755 "$script" "$root/init" || return
  for module in virtio_pci 9pnet_virtio 9p overlay; do
    modprobe -d "$kernel" -S "$version" --show-depends "$module" | sed -n 's/^insmod \([^ ]*\).*/\1/p'
  done | awk '!seen[$0]++' | while read -r module; do
    cp "$module" "$root/modules/" && basename "$module" >>"$root/modules/order"
  done
  (cd "$root" && find . | busybox cpio -o -H newc) >"$file" 2>/dev/null || return
  rm -r "$root"
}
