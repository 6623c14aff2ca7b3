# What ./demo, ./check and the continuous integration share. Sourced from the project's root.

say()
{
  printf '== %s\n' "$*"
}

as_root()
{
  if [ "$(id -u)" -eq 0 ]
  then
    "$@"
  elif command -v sudo > /dev/null
  then
    sudo "$@"
  else
    echo "This needs root (or sudo): $*" >&2
    return 1
  fi
}

missing_packages()
{
  sed -e 's/#.*//' -e '/^[[:space:]]*$/d' packages.txt | while read -r package
  do
    case "$(dpkg-query -W -f '${Status}' "$package" 2> /dev/null)" in
      *'ok installed') ;;
      *) echo "$package" ;;
    esac
  done
}

install_packages()
{
  packages=$(missing_packages)
  if [ -z "$packages" ]
  then
    say 'Every package of packages.txt is installed'
    return
  fi
  say "Installing" $packages
  export DEBIAN_FRONTEND=noninteractive
  as_root apt-get -qq update
  # Qt's and Mesa's recommended packages (themes, translations) are of no use here.
  as_root apt-get -qq install --yes --no-install-recommends $packages > /dev/null
}

# build <preset> [target...]
build()
{
  preset=$1
  shift
  say "Configuring the $preset build in build/$preset"
  # shellcheck disable=SC2086
  cmake --preset "$preset" ${ZV_CMAKE_ARGUMENTS:-} > "build-$preset.log" 2>&1 \
    || { cat "build-$preset.log"; rm -f "build-$preset.log"; return 1; }
  rm -f "build-$preset.log"
  say "Building it"
  cmake --build --preset "$preset" ${1:+--target "$@"}
}

# Run a command on a virtual screen, drawn in software: the same picture on every machine. The server
# must not reset itself when a test ends: the next one would find it closed for a moment.
on_virtual_screen()
{
  runtime=$(mktemp -d)
  chmod 700 "$runtime"
  status=0
  XDG_RUNTIME_DIR=$runtime LIBGL_ALWAYS_SOFTWARE=1 QT_QPA_PLATFORM=xcb \
    xvfb-run -a -s '-screen 0 1600x1200x24 -maxclients 2048 -noreset' "$@" || status=$?
  rm -rf "$runtime"
  return $status
}
