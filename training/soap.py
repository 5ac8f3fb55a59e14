"""The optimiser: Adam in the eigenbases of Shampoo's statistics (SOAP; Vyas et al., arXiv 2409.11321).

A bank of filters is a tensor of outputs, inputs and places. Each axis has a matrix of the gradient's second moments;
its eigenvectors turn the axis until the gradient's components hardly correlate, and there Adam's scaling fits.
"""
import torch

DECAY = 0.95  # of the means over steps: of gradients, of their squares, and of the matrices
TURN_STEPS = 10  # from one renewal of the eigenbases to the next
_TINY = 1e-8


def _turned(x, bases, back=False):
    """Each product turns the first axis and makes it the last, so that all have their places again in the end."""
    for basis in bases:
        x = torch.tensordot(x, basis, dims=([0], [1 if back else 0]))
    return x


def _moments(gradient, axis):
    rows = gradient.movedim(axis, 0).reshape(gradient.shape[axis], -1)
    return rows @ rows.T


def _eigenvectors(moments):
    return torch.linalg.eigh(moments)[1].flip(1)


class Soap(torch.optim.Optimizer):
    def __init__(self, parameters, lr):
        super().__init__(parameters, {"lr": lr})

    @torch.no_grad()
    def step(self):
        for group in self.param_groups:
            for parameter in group["params"]:
                # Banks of filters: the places of a filter are one axis. Everything else gets plain Adam.
                gradient = parameter.grad.flatten(2) if parameter.ndim == 4 else parameter.grad
                change = self._change(self.state[parameter], gradient)
                if change is not None:
                    parameter.sub_(group["lr"] * change.reshape(parameter.shape))

    @staticmethod
    def _change(state, gradient):
        """None at the first step, which only begins the statistics."""
        axes = range(gradient.ndim if gradient.ndim > 1 else 0)
        if not state:
            state["moments"] = [_moments(gradient, axis) for axis in axes]
            state["bases"] = [_eigenvectors(m) for m in state["moments"]]
            state.update(step=0, mean=torch.zeros_like(gradient), squares=torch.zeros_like(gradient))
            return None
        for axis in axes:
            state["moments"][axis].lerp_(_moments(gradient, axis), 1 - DECAY)
        state["step"] += 1
        state["mean"].lerp_(gradient, 1 - DECAY)
        state["squares"].lerp_(_turned(gradient, state["bases"]) ** 2, 1 - DECAY)
        started = 1 - DECAY ** state["step"]
        mean = _turned(state["mean"], state["bases"]) / started
        change = _turned(mean / ((state["squares"] / started).sqrt() + _TINY), state["bases"], back=True)
        if state["step"] % TURN_STEPS == 0:
            for axis in axes:
                Soap._renew(state, axis)
        return change

    @staticmethod
    def _renew(state, axis):
        """A step of the power iteration, with the vectors of the largest eigenvalues first."""
        basis, moments = state["bases"][axis], state["moments"][axis]
        order = torch.argsort(((moments @ basis) * basis).sum(0), descending=True)
        state["squares"] = state["squares"].index_select(axis, order)
        state["bases"][axis] = torch.linalg.qr(moments @ basis[:, order])[0]
