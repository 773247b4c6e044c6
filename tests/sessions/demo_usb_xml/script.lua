-- The demo explains what an XML job cannot answer, instead of showing empty tables.
arg = {[0] = os.getenv("JOB_ROOT") .. "/demo.lua", "recut.xml", "usb"}
dofile(arg[0])
