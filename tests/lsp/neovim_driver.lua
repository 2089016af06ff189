-- Drives Neovim's own language client through a list of steps read from the JSON file
-- $KELVARO_STEPS and writes what each step answered to $KELVARO_ANSWERS.
--   {op="open", file=...}                      edit the file, wait for the server
--   {op="request", method=..., line=, character=, query=}
--   {op="edit", line=, col=, end_line=, end_col=, lines={...}}   byte columns
--   {op="diagnostics", wait=ms}                the buffer's diagnostics after `wait`
local steps = vim.fn.json_decode(table.concat(vim.fn.readfile(vim.env.KELVARO_STEPS), '\n'))
local answers = {}

local function attached()
  for _, client in pairs(vim.lsp.buf_get_clients(0)) do
    if client.initialized then return true end
  end
  return false
end

for i, step in ipairs(steps) do
  local answer = vim.NIL
  if step.op == 'open' then
    vim.cmd('edit ' .. vim.fn.fnameescape(step.file))
    answer = vim.wait(10000, attached, 10)
  elseif step.op == 'request' then
    local params = {
      textDocument = vim.lsp.util.make_text_document_params(),
      position = { line = step.line or 0, character = step.character or 0 },
      query = step.query,
      context = { triggerKind = 1 },
    }
    local replies = vim.lsp.buf_request_sync(0, step.method, params, 5000)
    for _, reply in pairs(replies or {}) do
      answer = reply.result or { error = reply.err }
    end
  elseif step.op == 'edit' then
    vim.api.nvim_buf_set_text(0, step.line, step.col, step.end_line, step.end_col, step.lines)
    answer = true
  elseif step.op == 'diagnostics' then
    vim.wait(step.wait or 1000, function() return false end, 10)
    answer = {}
    for _, d in ipairs(vim.diagnostic.get(0)) do
      table.insert(answer, { line = d.lnum, message = d.message })
    end
  end
  answers[i] = answer == nil and vim.NIL or answer
end

vim.fn.writefile({ vim.fn.json_encode(answers) }, vim.env.KELVARO_ANSWERS)
vim.cmd('qa!')
