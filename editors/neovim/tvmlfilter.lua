-- TVML scripts in Neovim (0.7 or later): diagnostics, completion and all else that
-- `tvmlfilter lsp` answers. Copy this file to ~/.config/nvim/lua/tvmlfilter.lua and
-- write into init.lua:
--
--   require("tvmlfilter").setup()
--
-- Options: program (name or path), arguments (behind "lsp"), on_attach (as for
-- vim.lsp). A text file belongs to a programme when it ends with ".tvmlscript", or with
-- ".txt" below a folder with a tvmlfilter.toml; a description is XML with <staging>.
local M = {}

local clients = {} -- by project folder

-- The nearest folder that holds the project file, from the file's own upwards.
local function project_of(file)
  local folder = vim.fn.fnamemodify(file, ":p:h")
  local found = vim.fn.findfile("tvmlfilter.toml", vim.fn.fnameescape(folder) .. ";")
  return found ~= "" and vim.fn.fnamemodify(found, ":p:h") or nil
end

local function is_description(buffer)
  local head = table.concat(vim.api.nvim_buf_get_lines(buffer, 0, 40, false), "\n")
  return head:find("<staging") ~= nil
end

local function filetype_of(buffer)
  local file = vim.api.nvim_buf_get_name(buffer)
  if file:match("%.tvmlscript$") or (file:match("%.txt$") and project_of(file)) then
    return "tvmlscript"
  end
  return file:match("%.xml$") and is_description(buffer) and "tvmldescription" or nil
end

-- The converted script in a window beside this one, and the line that belongs to the
-- one with the cursor.
local function show_tvml(client, buffer)
  local line = vim.api.nvim_win_get_cursor(0)[1] - 1
  local params = { command = "tvmlfilter.showTvml", arguments = { vim.uri_from_bufnr(buffer) } }
  client.request("workspace/executeCommand", params, function(failure, shown)
    if failure then
      return vim.notify(failure.message, vim.log.levels.ERROR)
    end
    vim.cmd("vnew")
    vim.api.nvim_buf_set_lines(0, 0, -1, false, vim.split(shown.tvml, "\n"))
    vim.bo.buftype, vim.bo.bufhidden, vim.bo.modifiable = "nofile", "wipe", false
    for number, lines in ipairs(shown.lines) do
      if vim.tbl_contains(lines, line) then
        return vim.api.nvim_win_set_cursor(0, { number, 0 })
      end
    end
  end, buffer)
end

local function play_here(client, buffer)
  local line = vim.api.nvim_win_get_cursor(0)[1] - 1
  local params = { command = "tvmlfilter.play", arguments = { vim.uri_from_bufnr(buffer), line } }
  client.request("workspace/executeCommand", params, function(failure)
    if failure then
      vim.notify(failure.message, vim.log.levels.ERROR)
    end
  end, buffer)
end

local function add_commands(client, buffer)
  vim.bo[buffer].omnifunc = "v:lua.vim.lsp.omnifunc"
  vim.api.nvim_buf_create_user_command(buffer, "TvmlShow", function() show_tvml(client, buffer) end, {})
  vim.api.nvim_buf_create_user_command(buffer, "TvmlPlay", function() play_here(client, buffer) end, {})
end

local function attach(options, buffer)
  local file = vim.api.nvim_buf_get_name(buffer)
  local root = project_of(file) or vim.fn.fnamemodify(file, ":p:h")
  if clients[root] == nil or vim.lsp.get_client_by_id(clients[root]) == nil then
    local command = { options.program or "tvmlfilter", "lsp" }
    if vim.fn.executable(command[1]) == 0 then
      return vim.notify("tvmlfilter is not on the path; name it as setup{ program = ... }", vim.log.levels.WARN)
    end
    vim.list_extend(command, options.arguments or {})
    clients[root] = vim.lsp.start_client({
      name = "tvmlfilter",
      cmd = command,
      root_dir = root,
      offset_encoding = "utf-16",
      on_attach = function(client, attached)
        add_commands(client, attached)
        if options.on_attach then
          options.on_attach(client, attached)
        end
      end,
    })
  end
  vim.lsp.buf_attach_client(buffer, clients[root])
end

function M.setup(options)
  options = options or {}
  local group = vim.api.nvim_create_augroup("tvmlfilter", { clear = true })
  vim.api.nvim_create_autocmd({ "BufRead", "BufNewFile" }, {
    group = group,
    pattern = { "*.tvmlscript", "*.txt", "*.xml" },
    callback = function(event)
      local filetype = filetype_of(event.buf)
      if filetype then
        vim.bo[event.buf].filetype = filetype
        attach(options, event.buf)
      end
    end,
  })
end

return M
