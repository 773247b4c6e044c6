-- For the .luacheckrc of a folder of panel scripts.
stds.cus_ParseModule = {
  read_globals = {
    cus_ParseModule = {
      fields = {
        getjson_uDisk = {},
        getjson_Flash = {},
        getjson_url = {},
        get_work = {},
        get_cut = {},
        get_hole = {},
        get_print = {},
        get_Dimensions = {},
        save_cutCurIndex = {},
      },
    },
    panel = {  -- in cusdesk panel only
      fields = {
        grid = {},
        head = {},
        rows = {},
        update = {},
        page = {},
        index = {},
        order = {},
        reset = {},
        job = {},
        width = {},
        height = {},
        on_click = {read_only = false},
        on_page = {read_only = false},
        on_job = {read_only = false},
      },
    },
  },
}
std = "lua53+cus_ParseModule"
