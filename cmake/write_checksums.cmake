# At install time: the checksum of the plug-in as it is installed, stripped or not. On a controller,
# `sha256sum -c SHA256SUMS` tells whether the file arrived whole.
set(folder $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX})
file(SHA256 ${folder}/libCustom_LuaParseModule.so sum)
file(WRITE ${folder}/SHA256SUMS "${sum}  libCustom_LuaParseModule.so\n")
